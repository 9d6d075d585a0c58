"""check-style against small sources: what is laid out well passes, and each kind of fault is told with its line."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECK = Path(__file__).resolve().parents[2] / "scripts" / "check-style"


def check(text):
    """Exit code and output of the check over one source of this text, its path left out."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder, "A.cpp")
        path.write_text(text, encoding="utf-8")
        done = subprocess.run([sys.executable, str(CHECK), str(path)], capture_output=True, text=True)
        return done.returncode, (done.stdout + done.stderr).replace(str(path), "A.cpp")


class CheckStyle(unittest.TestCase):
    def expectFault(self, told, text):
        code, output = check(text)
        self.assertEqual((code, output.strip()), (1, told))

    def expectNone(self, text):
        self.assertEqual(check(text), (0, ""))

    def test_one_line_stands_bare(self):
        self.expectNone("void f() {\n    if (a)\n        b();\n    for (;;)\n        c();\n}\n")

    def test_braces_around_one_line_are_told(self):
        self.expectFault("A.cpp:2: braces around one line", "void f() {\n    while (a) {\n        b();\n    }\n}\n")

    def test_a_longer_body_wants_braces(self):
        self.expectFault("A.cpp:2: no braces around a longer body, or beside one",
                         "void f() {\n    if (a)\n        b(1,\n          2);\n}\n")

    def test_a_head_of_several_lines_is_one_head(self):
        self.expectNone("void f() {\n    if (a &&\n        b)\n        c();\n}\n")
        self.expectFault("A.cpp:2: braces around one line",
                         "void f() {\n    if (a &&\n        b) {\n        c();\n    }\n}\n")

    def test_branches_go_with_the_longest(self):
        self.expectNone("void f() {\n    if (a) {\n        b();\n    } else {\n        c();\n        d();\n    }\n}\n")
        self.expectFault("A.cpp:2: no braces around a longer body, or beside one",
                         "void f() {\n    if (a)\n        b();\n    else {\n        c();\n        d();\n    }\n}\n")

    def test_short_branches_all_stand_bare(self):
        self.expectFault("A.cpp:2: braces around one line\nA.cpp:4: braces around one line",
                         "void f() {\n    if (a) {\n        b();\n    } else {\n        c();\n    }\n}\n")

    def test_a_body_that_is_a_comment_keeps_its_braces(self):
        self.expectNone("void f() {\n    while (a()) {\n        // that is all\n    }\n}\n")

    def test_an_assertion_stands_in_braces(self):
        self.expectNone("void f() {\n    for (;;) {\n        EXPECT_TRUE(a);\n    }\n}\n")
        self.expectFault("A.cpp:2: no braces around a longer body, or beside one",
                         "void f() {\n    if (a)\n        EXPECT_TRUE(b);\n}\n")

    def test_words_in_texts_and_comments_are_none(self):
        self.expectNone('void f() {\n    g("if (a) {");  // if (a) {\n    h("QStringLiteral(");\n}\n')

    def test_constants_begin_with_a_capital(self):
        self.expectNone("constexpr int Most = 3;\nconstexpr int twice(int a) {\n    return 2 * a;\n}\n")
        for name, line in (("most", "constexpr int most = 3;"), ("rows", "static constexpr Row rows[] = {"),
                           ("size", "inline constexpr QSize size(3, 4);")):
            self.expectFault(f"A.cpp:1: the constant {name} begins with a small letter", line + "\n")

    def test_qstringliteral_is_told(self):
        self.expectFault('A.cpp:1: write u"..."_qs for QStringLiteral("...")', 'QString a = QStringLiteral("b");\n')

    def test_nothing_to_check_is_an_error(self):
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([sys.executable, str(CHECK), folder], capture_output=True, text=True)
        self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main()
