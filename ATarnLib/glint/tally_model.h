// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/tarn_export.h"

#include <QObject>

class USItemModel;
class USModel;

/// The tally light of one channel, as somebody has put it into the user dictionary.
/// Thread: the hub's.
class TARN_EXPORT TallyModel : public QObject
{
    Q_OBJECT

public:
    enum TallyState
    {
        none, ///< nothing is known, or a word that is not one of these
        offline,
        yellow,
        red,
        green
    };
    Q_ENUM(TallyState)

    /// \a model must outlive this object.
    TallyModel(USModel *model, unsigned int channel, QObject *parent = nullptr);

    TallyState get_state() const { return state; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void update();

private:
    TallyState get_tally_from_model() const;

    USItemModel *const item;
    TallyState state;
};
