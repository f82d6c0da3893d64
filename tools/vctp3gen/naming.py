# SPDX-License-Identifier: Apache-2.0
"""How names of the wire become names of C++."""
import re

KEYWORDS = frozenset("""
alignas alignof and and_eq asm auto bitand bitor bool break case catch char char8_t char16_t
char32_t class compl concept const consteval constexpr constinit const_cast continue co_await
co_return co_yield decltype default delete do double dynamic_cast else enum explicit export extern
false float for friend goto if import inline int long module mutable namespace new noexcept not
not_eq nullptr operator or or_eq private protected public register reinterpret_cast requires return
short signed sizeof static static_assert static_cast struct switch template this thread_local throw
true try typedef typeid typename union unsigned using virtual void volatile wchar_t while xor xor_eq
""".split())

TAG = re.compile(r"[A-Za-z][A-Za-z0-9_]*\Z")
VALUE = re.compile(r"[A-Za-z0-9][A-Za-z0-9_]*\Z")


def enumerator(wire):
    """59_94 -> v59_94, auto -> auto_, play -> play."""
    if wire[0].isdigit():
        return "v" + wire
    return wire + "_" if wire in KEYWORDS else wire


def member(element):
    """ClipID -> clip_id, VClipID -> vclip_id, Frame0Timecode -> frame0_timecode."""
    text = element.replace("VClip", "Vclip")
    text = re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", text)
    text = re.sub(r"([A-Z])([A-Z][a-z])", r"\1_\2", text)
    text = text.lower()
    return text + "_" if text in KEYWORDS else text
