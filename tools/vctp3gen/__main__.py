# SPDX-License-Identifier: Apache-2.0
"""Makes the code that repeats itself over the protocol's vocabulary from its tables.

    python3 tools/vctp3gen --tables DIR --output DIR [--templates DIR] [--stamp FILE]

Writes the files whose content changed. A bad row stops it with "file:line: message" and exit
code 1; nothing is written then.
"""
import argparse
import sys
from pathlib import Path

import emit_docs
import emit_frame
import emit_sim
import emit_tarnctl
import emit_tests
import emit_types
import out
import vocabulary
from tables import TableError

PROTOCOL = emit_types.PROTOCOL

# output below the output folder -> function of the vocabulary that gives its text
FILES = {
    f"{PROTOCOL}/enums.h": emit_types.enums_h,
    f"{PROTOCOL}/enums.cpp": emit_types.enums_cpp,
    f"{PROTOCOL}/records.h": emit_types.records_h,
    f"{PROTOCOL}/records.cpp": emit_types.records_cpp,
    f"{PROTOCOL}/record_xml.h": emit_types.record_xml_h,
    f"{PROTOCOL}/record_xml.cpp": emit_types.record_xml_cpp,
    f"{PROTOCOL}/record_text_p.h": emit_types.record_text_p_h,
    f"{PROTOCOL}/words_p.h": emit_types.words_p_h,
    f"{PROTOCOL}/words.cpp": emit_types.words_cpp,
    f"{PROTOCOL}/api_parser_dispatch.cpp": emit_frame.parser_dispatch_cpp,
    f"{PROTOCOL}/api_command_forms.cpp": emit_frame.command_forms_cpp,
    f"{PROTOCOL}/api_forms.cpp": emit_frame.api_forms_cpp,
    f"{PROTOCOL}/api_replies.cpp": emit_frame.api_replies_cpp,
    f"{PROTOCOL}/callback_groups.h": emit_frame.callback_groups_h,
    f"{PROTOCOL}/callback_groups.cpp": emit_frame.callback_groups_cpp,
    f"{PROTOCOL}/api_qt_forms.cpp": emit_frame.qt_forms_cpp,
    f"{PROTOCOL}/api_qt_impl_reports.cpp": emit_frame.qt_impl_reports_cpp,
    f"{PROTOCOL}/report_ahead_reports.cpp": emit_frame.report_ahead_cpp,
    "sim/vesk/vesk_handler.h": emit_sim.handler_h,
    "sim/vesk/vesk_handler.cpp": emit_sim.handler_cpp,
    "sim/vesk/replies.h": emit_sim.replies_h,
    "sim/vesk/replies.cpp": emit_sim.replies_cpp,
    "sim/vesk/reports.h": emit_sim.reports_h,
    "sim/vesk/reports.cpp": emit_sim.reports_cpp,
    **emit_docs.FILES,
    **emit_tarnctl.FILES,
    **emit_tests.FILES,
}

# hand-written class with a marker line for each block of generated members -> those members
TEMPLATES = {
    f"{PROTOCOL}/api_parser.h": emit_frame.parser_members,
    f"{PROTOCOL}/api_command.h": emit_frame.command_members,
    f"{PROTOCOL}/api.h": emit_frame.api_members,
    f"{PROTOCOL}/api_qt.h": emit_frame.qt_members,
    f"{PROTOCOL}/api_qt_impl_p.h": emit_frame.qt_impl_members,
    f"{PROTOCOL}/report_ahead_p.h": emit_frame.report_ahead_members,
}


def generate(tables, templates):
    """Path below the output folder -> text, of all that the tables give."""
    words = vocabulary.load(tables)
    result = {path: emit(words) for path, emit in FILES.items()}
    if templates:
        for path, members in TEMPLATES.items():
            template = Path(templates) / (path + ".in")
            result[path] = out.fill_template(template, members(words))
    return result


def main(argv):
    parser = argparse.ArgumentParser(prog="vctp3gen")
    parser.add_argument("--tables", required=True, help="folder of the *.tbl files")
    parser.add_argument("--output", required=True, help="root of the generated tree")
    parser.add_argument("--templates", help="root of the tree that holds the *.h.in files")
    parser.add_argument("--stamp", help="a file to touch when all is written")
    options = parser.parse_args(argv)
    try:
        files = generate(options.tables, options.templates)
    except (TableError, FileNotFoundError) as error:
        print(error, file=sys.stderr)
        return 1
    for path, content in files.items():
        out.write_if_changed(Path(options.output) / path, content)
    if options.stamp:
        Path(options.stamp).touch()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
