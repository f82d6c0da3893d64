// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/video_standard.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QList>
#include <QObject>
#include <QPointer>

class CFItemModel;
class CFModel;

/// The standard that a server is configured to run in, which for most servers is the one after
/// the next reboot. Setting it types into the configuration item: a commit sends it.
/// Thread: that of the configuration model.
class TARN_EXPORT VideoStandardModel : public QObject
{
    Q_OBJECT

public:
    /// Once \a model has gone, the standard is invalid and setting it does nothing.
    explicit VideoStandardModel(CFModel *model, QObject *parent = nullptr);
    /// Of the server on this machine; its model goes with its hub.
    explicit VideoStandardModel(QObject *parent);

    /// \name Invalid before the configuration has arrived, and for a text that is no standard
    /// @{
    Corvane::VideoStandard get() const;
    Corvane::VideoFrequency get_frequency() const;
    Corvane::VideoResolution get_resolution() const;
    /// @}

    /// \name Does nothing for an invalid value, nor before the server has told what it allows
    /// What it allows is not asked: `allowed` tells.
    /// @{
    void set(Corvane::VideoStandard standard);
    void set(Corvane::VideoFrequency frequency, Corvane::VideoResolution resolution);
    /// @}

    /// Whether the server allows any standard like that.
    bool allowed(Corvane::VideoStandard standard) const;
    bool allowed(Corvane::VideoFrequency frequency) const;
    bool allowed(Corvane::VideoResolution resolution) const;
    bool allowed(Corvane::VideoFrequency frequency, Corvane::VideoResolution resolution) const;
    /// In the server's order, without what is no standard here.
    QList<Corvane::VideoStandard> allowed_values() const;

Q_SIGNALS:
    /// \name The configuration item has changed
    /// All four come together, in this order, each with what the item reads by then.
    /// @{
    void changed(Corvane::VideoStandard standard);
    void changed(Corvane::VideoFrequency frequency);
    void changed(Corvane::VideoResolution resolution);
    void changed(Corvane::VideoFrequency frequency, Corvane::VideoResolution resolution);
    /// @}

private Q_SLOTS:
    void model_changed();

private:
    QPointer<CFItemModel> const item;
};
