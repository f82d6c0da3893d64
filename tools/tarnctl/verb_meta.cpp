// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnctl/text_form.h"
#include "tools/tarnctl/verbs.h"
#include "tools/tarnctl/watching_verb.h"

namespace TarnCtl {
namespace {

/// Database and prefix from the words behind the sub-verb.
QStringList place(CommandLine const &line)
{
    QStringList arguments{argument("MetadataDatabase", line.words[1])};
    if (line.words.size() > 2)
        arguments << argument("MetadataPrefix", line.words[2]);
    return arguments;
}

class MetaWatchVerb : public WatchingVerb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        return prepare_watching(line, error)
            && add_call("watch_metadata_database", place(line), error);
    }
};

class MetaGetVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        return add_call("download_metadata", place(line), error);
    }

protected:
    void got_reply(JsonValue const &reply) override
    {
        if (output().as_json()) {
            output().json_line(reply);
            return;
        }
        JsonValue const *const pairs = reply.find(QStringLiteral("MetadataList"));
        for (JsonValue::Member const &pair : pairs ? pairs->members() : none)
            table.add({plain_text(*pair.value.find(QStringLiteral("Key"))),
                visible(pair.value.scalar_of(QStringLiteral("Value")))});
    }

    void done() override
    {
        if (!table.is_empty())
            output().text(table.text());
        Verb::done();
    }

private:
    std::vector<JsonValue::Member> const none;
    TextTable table;
};

class MetaChangeVerb : public Verb
{
public:
    bool prepare(CommandLine const &line, QString *error) override
    {
        if (line.words[0] == QLatin1String("set"))
            return add_call("metadata_set", arguments(line, pair(line)), error);
        return add_call("metadata_erase", arguments(line, keys(line)), error);
    }

private:
    static QStringList arguments(CommandLine const &line, QString const &what)
    {
        QStringList result{argument("MetadataDatabase", line.words[1]), what};
        if (line.has("prefix"))
            result << argument("MetadataPrefix", line.value("prefix"));
        return result;
    }

    static QString pair(CommandLine const &line)
    {
        JsonValue one = JsonValue::object();
        one.add("Key", JsonValue::text(line.words[2]));
        one.add("Value", JsonValue::text(line.words[3]));
        JsonValue list = JsonValue::array();
        list.append(one);
        return argument("MetadataList", QString::fromUtf8(list.to_json()));
    }

    static QString keys(CommandLine const &line)
    {
        return argument("KeyList", json_names(line.words.mid(2)));
    }
};

} // namespace

std::unique_ptr<Verb> make_meta(CommandLine const &line)
{
    QString const how = line.words.value(0);
    if (how == QLatin1String("watch"))
        return std::make_unique<MetaWatchVerb>();
    if (how == QLatin1String("get"))
        return std::make_unique<MetaGetVerb>();
    return std::make_unique<MetaChangeVerb>();
}

} // namespace TarnCtl
