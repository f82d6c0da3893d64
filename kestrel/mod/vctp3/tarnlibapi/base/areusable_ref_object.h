// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>
#include <atomic>

/// A counted object that outlives its last reference: its owner hears of it and deletes it, or a
/// lookup finds it in between and gives it a new life.
///
/// The last release counts first and tells then. A lookup by another thread could take the object
/// up in between, and the owner delete it at the end of that new life, before the first release
/// has told. So, unless every reference is released on the thread that deletes, whoever may
/// release the last reference holds the lock that lookups and the owner take, over the release.
/// That lock is one that its thread may take again, since `zero_references` comes while it is
/// held; `PortableMutex` is.
/// Thread: any for the count; `zero_references` comes on the thread of the last release.
class TARN_EXPORT AReusableRefObject : public QObject
{
    Q_OBJECT

public:
    /// Without references.
    explicit AReusableRefObject(QObject *parent = nullptr);
    ~AReusableRefObject() override;

    /// False, and no reference added, when the count is at the end of its 32 bits.
    bool add_reference();
    /// Emits `zero_references` with the last one, and never deletes the object; for the lock to
    /// hold see above. Without a reference to release: an assertion.
    void release_reference();
    /// No reference is held. The owner asks under the lock that its lookups take, and deletes the
    /// object under the same lock.
    bool releasable() const;

Q_SIGNALS:
    void zero_references(AReusableRefObject *object);

private:
    std::atomic<unsigned int> references{0};
};
