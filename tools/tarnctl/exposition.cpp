// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/exposition.h"

#include "tools/tarnctl/json_value.h"

namespace TarnCtl {
namespace {

/// More digits than a double has make 0.1 look like 0.10000000000000001.
constexpr int value_digits = 15;

/// The format knows the escapes of the backslash, the quote and the line feed alone. Other control
/// characters become their escapes as text, so that none steers a terminal.
QString label_escaped(QString const &text)
{
    QString out;
    for (QChar const c : text) {
        if (c == u'\n')
            out += QLatin1String("\\n");
        else if (c == u'"' || c == u'\\')
            out += QLatin1Char('\\') + c;
        else
            out += visible(QString(c)).replace(u'\\', QLatin1String("\\\\"));
    }
    return out;
}

QString label_text(char const *name, QString const &value)
{
    return QStringLiteral("%1=\"%2\"").arg(QLatin1String(name), label_escaped(value));
}

} // namespace

void Exposition::family(char const *name, Type type, char const *help)
{
    family_name = QLatin1String(name);
    lines << QStringLiteral("# HELP %1 %2").arg(family_name, QLatin1String(help))
          << QStringLiteral("# TYPE %1 %2")
                 .arg(family_name, QLatin1String(type == Type::Counter ? "counter" : "gauge"));
}

void Exposition::value(Labels const &labels, double number)
{
    QStringList parts{label_text("server", server_name)};
    for (auto const &[name, value] : labels)
        parts << label_text(name, value);
    lines << family_name + u'{' + parts.join(u',') + QLatin1String("} ")
            + QString::number(number, 'g', value_digits);
}

void Exposition::states(Labels const &labels, QStringList const &all, QString const &present)
{
    for (QString const &state : all) {
        Labels with_state = labels;
        with_state.emplace_back("state", state);
        value(with_state, state == present ? 1 : 0);
    }
}

} // namespace TarnCtl
