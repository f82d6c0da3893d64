// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "sim/vesk/vesk_sim_options.h"

#include <QMutex>
#include <QMutexLocker>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

/// What the simulated server has received, as short texts: the command and the texts of its leaves,
/// as in "channel_report_register A status". It must outlive the server.
/// Thread: any.
class WireLog
{
public:
    /// Options for the server, with which it writes here.
    VeskSimOptions options(VeskSimOptions base = {})
    {
        base.trace = [this](QByteArray const &line) { note(line); };
        return base;
    }

    /// The commands so far, and forgets them; the registrations are kept.
    QStringList take()
    {
        QMutexLocker const lock(&mutex);
        return std::exchange(texts, {});
    }
    QStringList commands() const
    {
        QMutexLocker const lock(&mutex);
        return unshared(texts);
    }
    /// Those that begin with \a begin.
    QStringList commands(QString const &begin) const
    {
        QStringList result;
        for (QString const &text : commands())
            if (text.startsWith(begin))
                result.append(text);
        return result;
    }
    /// Those that register reports of a channel, or unregister them.
    QStringList channel_reports() const { return commands(QStringLiteral("channel_report")); }
    /// Such a command.
    static QString registration(char const *channel, char const *report)
    {
        return channel_report("channel_report_register", channel, report);
    }
    static QString unregistration(char const *channel, char const *report)
    {
        return channel_report("channel_report_unregister", channel, report);
    }
    /// What is registered on the newest connection: "A status", "melt".
    QSet<QString> registered() const
    {
        QMutexLocker const lock(&mutex);
        return unshared(groups);
    }

    /// Those of channels, beside the one that the hub wants for itself.
    QSet<QString> channels_registered() const
    {
        return registered() - QSet<QString>{QStringLiteral("config_change")};
    }

private:
    // The toolkit looks whether a list is still shared without the order that the thread sanitizer
    // wants to see.
    template <typename T> static T unshared(T list)
    {
        list.detach();
        return list;
    }
    static QString channel_report(char const *command, char const *channel, char const *report)
    {
        return QStringLiteral("%1 %2 %3")
            .arg(QLatin1String(command), QLatin1String(channel), QLatin1String(report));
    }
    void note(QByteArray const &line)
    {
        static QRegularExpression const received(
            QStringLiteral("^#(\\d+) < (.*)$"), QRegularExpression::DotMatchesEverythingOption);
        static QRegularExpression const xid(QStringLiteral("<xid>[^<]*</xid>"));
        static QRegularExpression const piece(
            QStringLiteral("<([a-z_0-9]+)[ />]|>([^<>]*\\S[^<>]*)<"));
        auto const match = received.match(QString::fromUtf8(line));
        if (!match.hasMatch())
            return;
        QStringList words;
        QString body = match.captured(2);
        body.remove(xid);
        body.remove(QStringLiteral("<cmd>"));
        for (auto at = piece.globalMatch(body); at.hasNext();) {
            auto const found = at.next();
            if (words.isEmpty())
                words.append(found.captured(1));
            else if (!found.captured(2).isEmpty())
                words.append(found.captured(2));
        }
        QMutexLocker const lock(&mutex);
        if (match.captured(1) != connection)
            groups.clear();
        connection = match.captured(1);
        texts.append(words.join(QLatin1Char(' ')));
        if (words[0].endsWith(QStringLiteral("report_register")))
            groups.insert(words.mid(1).join(QLatin1Char(' ')));
        if (words[0].endsWith(QStringLiteral("report_unregister")))
            groups.remove(words.mid(1).join(QLatin1Char(' ')));
    }

    mutable QMutex mutex;
    QStringList texts;
    QString connection;
    QSet<QString> groups;
};
