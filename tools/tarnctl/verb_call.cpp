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
        CommandInfo const *const command = known_command(line.words.first(), error);
        return command && add_call(*command, line.words.mid(1), error);
    }
};

} // namespace

std::unique_ptr<Verb> make_call(CommandLine const &)
{
    return std::make_unique<CallVerb>();
}

} // namespace TarnCtl
