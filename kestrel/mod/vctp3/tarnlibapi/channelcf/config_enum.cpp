// SPDX-License-Identifier: Apache-2.0
#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_enum.h"

#include "kestrel/mod/vctp3/tarnlibapi/channelcf/config_table_p.h"
#include "kestrel/mod/vctp3/tarnlibapi/protocol/enum_string.h"

namespace ChannelCF {

namespace {

using VCTP3::EnumString;

constexpr ConfigEnum named_twice[]
    = {ConfigEnum::ISO1_2P, ConfigEnum::ISO2_2P, ConfigEnum::ISO3_2P};

/// Three rows stand a second time at the end, as they always have; they change no answer.
constexpr auto name_rows = [] {
    std::array<EnumString::ByLatin1, config_enum_count + std::size(named_twice)> names{};
    names[0] = {static_cast<int>(ConfigEnum::absent), "absent"};
    std::size_t next = 1;
    for (ConfigTable::ConfigRow const &row : ConfigTable::rows)
        names[next++] = {static_cast<int>(row.value), row.name};
    for (ConfigEnum value : named_twice)
        names[next++] = names[static_cast<std::size_t>(value)];
    return names;
}();
static_assert(name_rows.size() == 81);

EnumString const &config_names()
{
    static EnumString const table(name_rows.data(), name_rows.size(), -1, AString::l1("????"));
    return table;
}

} // namespace

AString ConfigEnumStr(ConfigEnum value)
{
    return config_names().to_name(static_cast<int>(value));
}

ConfigEnum vctp3_to_config(AString const &name)
{
    return static_cast<ConfigEnum>(config_names().to_enumval(name));
}

} // namespace ChannelCF
