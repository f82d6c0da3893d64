// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace TarnCtl {

/// Values as a metrics collector reads them: the text exposition format of Prometheus, version
/// 0.0.4, in which the values of one name stand together behind its help and its type.
class Exposition
{
public:
    enum class Type
    {
        Counter, ///< grows while the program runs; its name ends in "_total"
        Gauge
    };
    using Labels = std::vector<std::pair<char const *, QString>>;

    /// Each value gets the label "server".
    explicit Exposition(QString const &server)
        : server_name(server)
    {
    }

    /// Begins the values of \a name. Units stand in the name: base units such as seconds or bytes.
    void family(char const *name, Type type, char const *help);
    void value(Labels const &labels, double number);
    /// One value for each of \a all as the label "state": 1 for \a present, 0 for the others.
    void states(Labels const &labels, QStringList const &all, QString const &present);

    /// Without the last line's end.
    QString text() const { return lines.join(u'\n'); }

private:
    QString const server_name;
    QString family_name;
    QStringList lines;
};

} // namespace TarnCtl
