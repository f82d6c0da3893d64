// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

/// The characters that text is written without, and what stands for them.
struct XMLEscape
{
    char32_t character;
    std::string_view entity;
};

inline constexpr std::array<XMLEscape, 5> xml_escapes{{
    {U'\'', "&apos;"},
    {U'<', "&lt;"},
    {U'>', "&gt;"},
    {U'"', "&quot;"},
    {U'&', "&amp;"},
}};

/// The entity for \a c, or an empty text when it is written as it is.
constexpr std::string_view xml_entity_of(char32_t c)
{
    switch (c) {
    case U'\'':
        return xml_escapes[0].entity;
    case U'<':
        return xml_escapes[1].entity;
    case U'>':
        return xml_escapes[2].entity;
    case U'"':
        return xml_escapes[3].entity;
    case U'&':
        return xml_escapes[4].entity;
    default:
        return {};
    }
}
