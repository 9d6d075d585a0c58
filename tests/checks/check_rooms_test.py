"""check-rooms against small trees: a good one passes, and each kind of fault is reported."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(__file__).resolve().parents[2] / "scripts" / "check-rooms"
TABLE = "low:\nmiddle: low\nhigh: low middle\n"
GOOD = {
    "low/A.h": "#include <QString>\n",
    "low/A.cpp": '#include "low/A.h"\n',
    "middle/B.h": '#include "low/A.h"\nclass C;\n',
    "high/C.h": '#include "middle/B.h"\n#include "low/A.h"\n',
}

FOLDER_TABLE = "low:\nmiddle: low\nhigh: low middle\nhigh/a: low\nhigh/b: middle high/a\n"
WITH_FOLDERS = {
    "low/A.h": "#include <QString>\n",
    "middle/B.h": '#include "low/A.h"\n',
    "high/a/A.h": '#include "low/A.h"\n',
    "high/b/B.h": '#include "high/a/A.h"\n#include "middle/B.h"\n',
    "high/C.h": '#include "high/b/B.h"\n#include "high/a/A.h"\n',
}


def check(files, table=TABLE):
    """Exit code and output of the check over a tree of these files."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**files, "rooms.txt": table}.items():
            path = Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        done = subprocess.run([sys.executable, str(CHECK), folder], capture_output=True, text=True)
        return done.returncode, done.stdout + done.stderr


class CheckRooms(unittest.TestCase):
    def expectFault(self, words, files, table=TABLE):
        code, output = check(files, table)
        self.assertEqual(code, 1, output)
        self.assertIn(words, output)

    def test_a_tree_that_keeps_to_its_table_passes_in_silence(self):
        self.assertEqual(check(GOOD), (0, ""))

    def test_an_include_that_runs_upwards_is_reported_with_its_line(self):
        self.expectFault("low/D.h:2: low may not include high", {**GOOD, "low/D.h": '\n#include "high/C.h"\n'})

    def test_angle_brackets_and_blanks_do_not_hide_an_include(self):
        self.expectFault("low may not include middle", {**GOOD, "low/D.cpp": " #  include <middle/B.h>\n"})

    def test_a_lower_room_that_is_not_granted_is_reported(self):
        self.expectFault("high may not include low", GOOD, "low:\nmiddle: low\nhigh: middle\n")

    def test_a_circle_inside_a_room_is_reported(self):
        self.expectFault("circle: low/D -> low/E -> low/D (one of 2 units that include each other)",
                         {**GOOD, "low/D.h": '#include "low/E.h"\n', "low/E.h": '#include "low/D.h"\n'})

    def test_a_circle_through_a_source_is_reported(self):
        self.expectFault("circle: low/D -> low/E -> low/D",
                         {**GOOD, "low/D.h": '#include "low/E.h"\n', "low/E.h": "", "low/E.cpp": '#include "low/D.h"\n'})
        self.expectFault("circle: low/D -> low/E -> low/D",
                         {**GOOD, "low/D.h": "", "low/D.cpp": '#include "low/E.h"\n#include "low/D.h"\n',
                          "low/E.h": "", "low/E.cpp": '#include "low/E.h"\n#include "low/D.h"\n'})

    def test_two_sources_that_take_the_same_headers_are_no_circle(self):
        self.assertEqual(check({**GOOD, "low/D.h": '#include "low/A.h"\n', "low/E.h": '#include "low/D.h"\n',
                                "low/D.cpp": '#include "low/D.h"\n#include "low/A.h"\n', "low/E.cpp": '#include "low/E.h"\n'}),
                         (0, ""))

    def test_circles_that_share_a_unit_are_reported_once_by_a_shortest_one(self):
        code, output = check({**GOOD, "low/D.h": '#include "low/E.h"\n', "low/E.h": '#include "low/F.h"\n',
                              "low/F.h": '#include "low/D.h"\n#include "low/G.h"\n', "low/G.h": "",
                              "low/G.cpp": '#include "low/F.h"\n'})
        self.assertEqual((code, output), (1, "circle: low/F -> low/G -> low/F (one of 4 units that include each other)\n"))

    def test_circles_that_share_nothing_are_reported_one_by_one(self):
        code, output = check({**GOOD, "low/D.h": '#include "low/E.h"\n', "low/E.h": '#include "low/D.h"\n',
                              "high/D.h": '#include "high/E.h"\n', "high/E.h": '#include "high/D.h"\n'})
        self.assertEqual((code, output.count("circle:")), (1, 2), output)
        self.assertIn("circle: high/D -> high/E -> high/D", output)

    def test_a_unit_that_only_leads_to_a_circle_is_not_counted(self):
        self.expectFault("one of 2 units", {**GOOD, "low/D.h": '#include "low/E.h"\n', "low/E.h": '#include "low/D.h"\n',
                                            "low/F.h": '#include "low/D.h"\n'})

    def test_a_file_that_includes_itself_is_a_circle(self):
        self.expectFault("circle: low/D.h -> low/D.h", {**GOOD, "low/D.h": '#include "low/D.h"\n'})

    def test_a_longer_circle_across_rooms_is_reported(self):
        self.expectFault("circle:", {**GOOD, "low/A.h": '#include "high/C.h"\n'})

    def test_a_sub_folder_is_included_by_what_its_line_allows(self):
        self.assertEqual(check(WITH_FOLDERS, FOLDER_TABLE), (0, ""))

    def test_an_include_against_the_order_of_sub_folders_is_reported(self):
        self.expectFault("high/a/D.h:1: high/a may not include high/b", {**WITH_FOLDERS, "high/a/D.h": '#include "high/b/B.h"\n'},
                         FOLDER_TABLE)

    def test_a_sub_folder_does_not_see_what_stands_directly_in_its_room(self):
        self.expectFault("high/b/D.h:1: high/b may not include high", {**WITH_FOLDERS, "high/b/D.h": '#include "high/C.h"\n'},
                         FOLDER_TABLE)

    def test_a_sub_folder_sees_fewer_rooms_than_its_room_does(self):
        self.expectFault("high/a/D.h:1: high/a may not include middle", {**WITH_FOLDERS, "high/a/D.h": '#include "middle/B.h"\n'},
                         FOLDER_TABLE)

    def test_a_sub_folder_that_is_allowed_more_than_its_room_is_a_fault_of_the_table(self):
        self.expectFault("high/a would include middle, which high may not", WITH_FOLDERS,
                         "low:\nmiddle: low\nhigh: low\nhigh/a: middle\nhigh/b: high/a\n")

    def test_a_sub_folder_without_a_line_is_reported_where_others_have_one(self):
        self.expectFault("high/c/D.h: stands in no room", {**WITH_FOLDERS, "high/c/D.h": ""}, FOLDER_TABLE)

    def test_one_sub_folder_of_a_lower_room_can_be_allowed_alone(self):
        table = FOLDER_TABLE + "top: high/a\n"
        self.assertEqual(check({**WITH_FOLDERS, "top/D.h": '#include "high/a/A.h"\n'}, table), (0, ""))
        self.expectFault("top/D.h:1: top may not include high/b", {**WITH_FOLDERS, "top/D.h": '#include "high/b/B.h"\n'}, table)

    def test_a_file_named_without_its_room_is_reported(self):
        self.expectFault('write "low/A.h"', {**GOOD, "low/D.cpp": '#include "A.h"\n'})

    def test_a_file_outside_every_room_is_reported(self):
        self.expectFault("stands in no room", {**GOOD, "attic/D.cpp": "\n"})

    def test_a_table_that_names_a_room_before_it_stands_is_reported(self):
        self.expectFault("does not stand below", GOOD, "low: high\nmiddle: low\nhigh: low middle\n")

    def test_an_empty_tree_is_no_success(self):
        self.assertEqual(check({})[0], 2)


if __name__ == "__main__":
    unittest.main()
