// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/verb.h"
#include "tools/tarnctl/verbs.h"

namespace TarnCtl {
namespace {

class ConfigListVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        wanted = line.words.value(1);
        return add_call("get_configuration", {}, error);
    }

protected:
    void got_reply(JsonValue const &reply) override
    {
        JsonValue const *const item = reply.find(QStringLiteral("ConfigurationItem"));
        if (item && !text_of(*item, "Name").contains(wanted))
            return;
        if (output().as_json())
            output().json_line(reply);
        else if (item)
            add(*item);
    }

    void done() override
    {
        if (!table.is_empty())
            output().text(table.text());
        Verb::done();
    }

private:
    static QString text_of(JsonValue const &item, char const *part)
    {
        return visible(item.scalar_of(QStringLiteral("ConfigurationItem") + QLatin1String(part)));
    }

    void add(JsonValue const &item)
    {
        if (table.is_empty())
            table.add({QStringLiteral("Name"), QStringLiteral("Effective"), QStringLiteral("Saved"),
                QStringLiteral("Access"), QStringLiteral("Reboot")});
        JsonValue const *const reboot
            = item.find(QStringLiteral("ConfigurationItemRequiresReboot"));
        table.add({text_of(item, "Name"), text_of(item, "EffectiveValue"),
            text_of(item, "SavedValue"), text_of(item, "Access"),
            reboot && reboot->truth() ? QStringLiteral("yes") : QString()});
    }

    QString wanted;
    TextTable table;
};

class ConfigItemVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (line.words[0] == QLatin1String("get"))
            return add_call("get_one_configuration", {name(line)}, error);
        return add_call("set_configuration",
            {name(line), argument("ConfigurationItemValue", line.words[2])}, error);
    }

private:
    static QString name(CommandLine const &line)
    {
        return argument("ConfigurationItemName", line.words[1]);
    }
};

} // namespace

std::unique_ptr<Verb> make_config(CommandLine const &line)
{
    if (line.words.value(0) == QLatin1String("list"))
        return std::make_unique<ConfigListVerb>();
    return std::make_unique<ConfigItemVerb>();
}

} // namespace TarnCtl
