# SPDX-License-Identifier: Apache-2.0
"""The layout checker finds what it is there to find."""
import unittest

from check_layout import CORE, offences


class CheckLayout(unittest.TestCase):
    def found(self, name, text):
        return [line for _, line in offences(name, text)]

    def test_downward_include_is_accepted(self):
        self.assertEqual([], self.found(CORE + "xml/a.h", f'#include "{CORE}base/astring.h"\n'))

    def test_upward_include_is_found(self):
        self.assertEqual(1, len(self.found(CORE + "base/a.h", f'#include "{CORE}xml/xml_tree.h"\n')))
        self.assertEqual(1, len(self.found(CORE + "protocol/a.h",
                                           '#include "ATarnLib/glint/glint.h"\n')))

    def test_core_including_its_toolkit_side_is_found(self):
        text = f'#include "{CORE}protocol/xml_parse_engine2.h"\n'
        self.assertEqual(1, len(self.found(CORE + "protocol/client.cpp", text)))
        self.assertEqual([], self.found(CORE + "protocol/api_qt.cpp", text))

    def test_library_including_simulator_is_found(self):
        self.assertEqual(1, len(self.found("ATarnLib/base/a.h", '#include "sim/vesk/vesk.h"\n')))

    def test_simulator_including_client_logic_is_found(self):
        self.assertEqual(1, len(self.found("sim/vesk/a.h", f'#include "{CORE}protocol/api.h"\n')))
        self.assertEqual([], self.found("sim/vesk/a.h", f'#include "{CORE}protocol/enums.h"\n'))

    def test_demo_desktop_reaching_past_the_installed_headers_is_found(self):
        for path in ("ATarnLib/glint/glint.h", "sim/vesk/vesk_sim.h"):
            self.assertEqual(1, len(self.found("demo/desktop/a.cpp", f'#include "{path}"\n')))
        self.assertEqual([], self.found("demo/desktop/a.cpp",
                                        '#include <Tarn/Glint>\n#include "demo/desktop/a.h"\n'))

    def test_short_include_path_is_found(self):
        self.assertEqual(1, len(self.found("sim/vesk/a.h", '#include "vesk.h"\n')))

    def test_waiting_on_the_clock_is_found(self):
        self.assertEqual(1, len(self.found("tests/base/tst_a.cpp", "    QTest::qWait(5);\n")))

    def test_waiting_for_less_than_the_common_limit_is_found(self):
        for wait in ("    QTRY_VERIFY(done);\n", "    return QTest::qWaitFor(done);\n"):
            self.assertEqual(1, len(self.found("tests/base/tst_a.cpp", wait)))
            self.assertEqual([], self.found("tests/base/tst_a.cpp",
                                            '#include "tests/support/patience.h"\n' + wait))

    def test_rows_without_a_test_are_found(self):
        rows = "    void keeps_the_data()\n    {\n    }\n"
        self.assertEqual(["never runs: keeps_the_data"], self.found("tests/base/tst_a.cpp", rows))
        self.assertEqual([], self.found("tests/base/tst_a.cpp", rows + "    void keeps_the();\n"))
        outside = "void TestA::keeps_data()\n{\n}\nvoid TestA::keeps()\n{\n}\n"
        self.assertEqual([], self.found("tests/base/tst_a.cpp", outside))
        self.assertEqual([], self.found("ATarnLib/base/a.cpp", rows))

    def test_module_wide_header_is_found(self):
        self.assertEqual(1, len(self.found("ATarnLib/base/a.h", "#include <QtCore>\n")))


if __name__ == "__main__":
    unittest.main()
