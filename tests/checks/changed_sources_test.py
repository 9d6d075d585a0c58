"""changed-sources in small repositories: which sources a change is about, and in which order."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SCRIPT = Path(__file__).resolve().parents[2] / "scripts" / "changed-sources"
BODY = "".join(f"int value{number};\n" for number in range(30))


class ChangedSources(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        self.environment = {**os.environ, "GIT_CONFIG_GLOBAL": os.devnull, "GIT_CONFIG_NOSYSTEM": "1"}
        self.git("init", "--quiet", "--initial-branch=main")

    def git(self, *arguments):
        identity = ("-c", "user.name=Somebody", "-c", "user.email=somebody@localhost")
        subprocess.run(["git", *identity, *arguments], cwd=self.root, env=self.environment, check=True, capture_output=True)

    def commit(self, files=None, removed=()):
        for name, text in (files or {}).items():
            path = self.root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        for name in removed:
            (self.root / name).unlink()
        self.git("add", "--all")
        self.git("commit", "--quiet", "--allow-empty", "--message=Change something")

    def land(self):
        """What is committed so far is what origin/main has."""
        self.git("update-ref", "refs/remotes/origin/main", "HEAD")

    def sources(self, *arguments):
        done = subprocess.run([sys.executable, str(SCRIPT), *arguments], cwd=self.root, env=self.environment, text=True,
                              capture_output=True)
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout.split()

    def test_names_what_changed_since_the_branch_left_main(self):
        self.commit({"src/text/A.cpp": BODY, "src/text/B.cpp": BODY})
        self.land()
        self.commit({"src/text/B.cpp": BODY + "int more;\n", "README.md": "Text\n"})
        self.assertEqual(self.sources(), ["src/text/B.cpp"])

    def test_names_what_changed_most_first_and_no_more_than_asked_for(self):
        self.commit({"src/text/A.cpp": BODY, "src/text/B.cpp": BODY, "src/text/C.cpp": BODY})
        self.land()
        self.commit({"src/text/A.cpp": BODY + "int a;\n", "src/text/B.cpp": BODY.replace("int", "long"),
                     "src/text/C.cpp": BODY + "int a;\nint b;\n"})
        self.assertEqual(self.sources(), ["src/text/B.cpp", "src/text/C.cpp", "src/text/A.cpp"])
        self.assertEqual(self.sources("--most", "2"), ["src/text/B.cpp", "src/text/C.cpp"])

    def test_a_header_counts_for_its_source(self):
        self.commit({"src/text/A.h": BODY, "src/text/A.cpp": BODY, "src/text/Alone.h": BODY})
        self.land()
        self.commit({"src/text/A.h": BODY + "int a;\n", "src/text/Alone.h": BODY + "int a;\n"})
        self.assertEqual(self.sources(), ["src/text/A.cpp"])

    def test_a_move_includes_comments_and_blanks_count_nothing(self):
        self.commit({"src/text/A.cpp": BODY, "src/text/B.cpp": BODY.replace("value", "other")})
        self.land()
        self.commit({"src/text/deep/A.cpp": '#include "text/deep/A.h"\n\n// Moved.\n' + BODY}, removed=["src/text/A.cpp"])
        self.assertEqual(self.sources(), [])

    def test_what_a_moved_file_changed_counts(self):
        self.commit({"src/text/A.cpp": BODY})
        self.land()
        self.commit({"src/text/deep/A.cpp": BODY + "int more;\n"}, removed=["src/text/A.cpp"])
        self.assertEqual(self.sources(), ["src/text/deep/A.cpp"])

    def test_a_removed_source_is_not_named(self):
        self.commit({"src/text/A.cpp": BODY, "src/text/B.cpp": BODY})
        self.land()
        self.commit({"src/text/B.cpp": "int b;\n"}, removed=["src/text/A.cpp"])
        self.assertEqual(self.sources(), ["src/text/B.cpp"])

    def test_takes_the_last_twenty_commits_where_nothing_left_main(self):
        self.commit({"src/text/Old.cpp": BODY})
        self.commit({"src/text/New.cpp": BODY})
        for _ in range(19):
            self.commit()
        self.assertEqual(self.sources(), ["src/text/New.cpp"])
        self.land()
        self.assertEqual(self.sources(), ["src/text/New.cpp"])

    def test_takes_everything_of_a_shorter_history(self):
        self.commit({"src/text/A.cpp": BODY, "tests/text/ATest.cpp": BODY + "int more;\n", "scripts/a.cpp": BODY})
        self.assertEqual(self.sources(), ["tests/text/ATest.cpp", "src/text/A.cpp"])

    def test_an_unknown_argument_is_refused(self):
        done = subprocess.run([sys.executable, str(SCRIPT), "--least"], cwd=self.root, text=True, capture_output=True)
        self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main()
