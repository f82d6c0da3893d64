// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

class CallVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (line.words.isEmpty()) {
            *error = QStringLiteral("which command? 'tarnctl call --help' lists them");
            return false;
        }
        QString const name = line.words.first();
        CommandInfo const *const command = find_command(name);
        if (command)
            return add_call(*command, line.words.mid(1), error);
        QStringList const similar = similar_commands(name);
        *error = QStringLiteral("no command '%1': ").arg(name)
            + (similar.isEmpty()
                    ? QString()
                    : QStringLiteral("like %1; ").arg(similar.join(QStringLiteral(", "))))
            + QStringLiteral("'tarnctl call --help' lists them");
        return false;
    }
};

} // namespace

std::unique_ptr<Verb> make_call(CommandLine const &)
{
    return std::make_unique<CallVerb>();
}

} // namespace TarnCtl
