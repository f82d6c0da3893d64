// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

/// Reads text as a metrics collector does: the text exposition format, version 0.0.4, and the
/// conventions for names that a collector's linter looks at.
class ExpositionCheck
{
public:
    /// What is wrong with the first line that is wrong, as "line 3: ..."; empty if nothing is.
    static QString error_in(QString const &text)
    {
        ExpositionCheck check;
        if (!text.endsWith(u'\n'))
            return QStringLiteral("the last line has no end");
        QStringList const lines = text.chopped(1).split(u'\n');
        for (int i = 0; i < lines.size(); ++i) {
            QString const error = check.read(lines[i]);
            if (!error.isEmpty())
                return QStringLiteral("line %1: %2").arg(i + 1).arg(error);
        }
        return {};
    }

private:
    QString read(QString const &line)
    {
        static QRegularExpression const comment(
            QStringLiteral("^# (HELP|TYPE) ([a-zA-Z_:][a-zA-Z0-9_:]*) (.*)$"));
        if (line.isEmpty())
            return {};
        if (!line.startsWith(u'#'))
            return read_sample(line);
        auto const match = comment.match(line);
        if (!match.hasMatch())
            return QStringLiteral("a comment that is neither help nor type");
        return match.captured(1) == QLatin1String("HELP")
            ? begin(match.captured(2))
            : read_type(match.captured(2), match.captured(3));
    }

    QString begin(QString const &name)
    {
        if (families.contains(name))
            return QStringLiteral("%1 begins twice").arg(name);
        families.insert(name);
        family = name;
        type.clear();
        return {};
    }

    QString read_type(QString const &name, QString const &what)
    {
        static QStringList const known{QStringLiteral("counter"), QStringLiteral("gauge")};
        if (name != family || !type.isEmpty())
            return QStringLiteral("a type that does not follow its help");
        if (!known.contains(what))
            return QStringLiteral("no type '%1'").arg(what);
        if ((what == QLatin1String("counter")) != name.endsWith(QLatin1String("_total")))
            return QStringLiteral("a name that ends in _total is that of a counter, and no other");
        type = what;
        return {};
    }

    QString read_sample(QString const &line)
    {
        static QString const label
            = QStringLiteral("[a-zA-Z_][a-zA-Z0-9_]*=\"(?:[^\"\\\\\n]|\\\\[\\\\\"n])*\"");
        static QRegularExpression const sample(
            QStringLiteral("^([a-zA-Z_:][a-zA-Z0-9_:]*)(\\{%1(?:,%1)*\\})? (\\S+)$").arg(label));
        auto const match = sample.match(line);
        if (!match.hasMatch())
            return QStringLiteral("no sample");
        if (match.captured(1) != family || type.isEmpty())
            return QStringLiteral("a sample outside of its family");
        bool is_number = false;
        double const value = match.captured(3).toDouble(&is_number);
        if (!is_number || (type == QLatin1String("counter") && value < 0))
            return QStringLiteral("no value '%1'").arg(match.captured(3));
        return read_labels(match.captured(1) + match.captured(2), match.captured(2));
    }

    QString read_labels(QString const &series, QString const &labels)
    {
        static QRegularExpression const name(
            QStringLiteral("([a-zA-Z_][a-zA-Z0-9_]*)=\"(?:[^\"\\\\]|\\\\.)*\""));
        QSet<QString> names;
        for (auto at = name.globalMatch(labels); at.hasNext();) {
            QString const label = at.next().captured(1);
            if (names.contains(label))
                return QStringLiteral("the label %1 twice").arg(label);
            names.insert(label);
        }
        if (samples.contains(series))
            return QStringLiteral("%1 twice").arg(series);
        samples.insert(series);
        return {};
    }

    QSet<QString> families;
    QSet<QString> samples;
    QString family;
    QString type;
};
