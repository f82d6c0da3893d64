// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ATarnLib/timecode/atimecode.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/records.h"

#include <QObject>
#include <QStringList>

#include <initializer_list>
#include <list>

/// What the signals of a monitor say, a line for each emission: a name and the values.
class SignalNotes
{
public:
    template <typename Monitor, typename Owner, typename... Values>
    void hear(Monitor *monitor, void (Owner::*signal)(Values...), char const *name)
    {
        QObject::connect(monitor, signal, &here, [this, name](Values... values) {
            noted.append(
                QStringList({QLatin1String(name), text(values)...}).join(QLatin1Char(' ')));
        });
    }
    QStringList const &lines() const { return noted; }
    void clear() { noted.clear(); }

    static QStringList of(std::initializer_list<char const *> lines)
    {
        QStringList result;
        for (char const *line : lines)
            result.append(QString::fromUtf8(line));
        return result;
    }

private:
    static QString text(QString const &value) { return value; }
    static QString text(int value) { return QString::number(value); }
    static QString text(unsigned int value) { return QString::number(value); }
    static QString text(VCTP3::ChannelStatus value) { return QString::number(int(value)); }
    static QString text(Corvane::ATimecode const &value) { return QString(value.toString(4)); }
    static QString text(VCTP3::ChannelInformation const &value)
    {
        return QString::number(value.cliplength);
    }
    static QString text(AOption<VCTP3::Playback> const &value)
    {
        return value ? QString::number(int(*value)) : QStringLiteral("none");
    }
    static QString text(std::list<unsigned int> const &value)
    {
        QStringList numbers;
        for (unsigned int number : value)
            numbers.append(QString::number(number));
        return numbers.join(QLatin1Char(' '));
    }

    QObject here;
    QStringList noted;
};
