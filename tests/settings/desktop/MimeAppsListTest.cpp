#include "settings/desktop/MimeAppsList.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>
#include <vector>

namespace {

using Group = MimeAppsList::Group;
using Marks = MimeAppsList::Marks;

const QByteArray Ours = "Quillmark.desktop";

struct Edit {
    Group group;
    QByteArray type;
};

QByteArray inserted(const QByteArray& bytes, const Edit& edit, Marks& marks) {
    MimeAppsList list(bytes, Ours);
    list.insert(edit.group, edit.type, marks);
    return list.bytes();
}

QByteArray removed(const QByteArray& bytes, const Edit& edit, Marks& marks) {
    MimeAppsList list(bytes, Ours);
    list.remove(edit.group, edit.type, marks);
    return list.bytes();
}

const Edit TextDefault{Group::Default, "text/plain"};
const Edit TextAdded{Group::Added, "text/plain"};

/// A row: the file before, the edit, the file after it. Undoing it must lead back.
struct Row {
    const char* before;
    Edit edit;
    const char* after;
};

const Row Rows[] = {
    {"", TextDefault, "[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
    {"", TextAdded, "[Added Associations]\ntext/plain=Quillmark.desktop;\n"},
    {"# mine", TextDefault, "# mine\n[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
    {"[Default Applications]", TextDefault, "[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
    {"[Default Applications]\ntext/plain=vim.desktop\n", TextDefault,
     "[Default Applications]\ntext/plain=Quillmark.desktop;vim.desktop\n"},
    {"[Default Applications]\ntext/plain = vim.desktop;\r\n", TextDefault,
     "[Default Applications]\ntext/plain = Quillmark.desktop;vim.desktop;\r\n"},
    {"[Default Applications]\ntext/plain=\n", TextDefault, "[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
    {"[Default Applications]\n\n[Other]\nx=y\n", TextDefault,
     "[Default Applications]\ntext/plain=Quillmark.desktop;\n\n[Other]\nx=y\n"},
    {"[Default Applications]\na/b=c;\n[Other]\nx=y\n", TextDefault,
     "[Default Applications]\na/b=c;\ntext/plain=Quillmark.desktop;\n[Other]\nx=y\n"},
    {"[Default Applications]\ntext/plain=vim.desktop;Quillmark.desktop;\n", TextDefault,
     "[Default Applications]\ntext/plain=Quillmark.desktop;vim.desktop;Quillmark.desktop;\n"},
    {"[Default Applications]\ntext/plain=a;\ntext/plain=Quillmark.desktop;\n", TextDefault,
     "[Default Applications]\ntext/plain=Quillmark.desktop;a;\ntext/plain=Quillmark.desktop;Quillmark.desktop;\n"},
    {"[Default Applications]\nx=y\n[Other]\n[Default Applications]\ntext/plain=vim.desktop", TextDefault,
     "[Default Applications]\nx=y\n[Other]\n[Default Applications]\ntext/plain=Quillmark.desktop;vim.desktop"},
    {"[Default Applications]\n#text/plain=vim.desktop\n", TextDefault,
     "[Default Applications]\n#text/plain=vim.desktop\ntext/plain=Quillmark.desktop;\n"},
    {"text/plain=vim.desktop\n", TextDefault,
     "text/plain=vim.desktop\n[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
    {"[Added Associations]\ntext/plain=vim.desktop\n", TextAdded,
     "[Added Associations]\ntext/plain=vim.desktop;Quillmark.desktop\n"},
    {"[Added Associations]\ntext/plain=vim.desktop; \n", TextAdded,
     "[Added Associations]\ntext/plain=vim.desktop;Quillmark.desktop; \n"},
    {"[Added Associations]\ntext/plain=vim.desktop", TextAdded,
     "[Added Associations]\ntext/plain=vim.desktop;Quillmark.desktop"},
    {"[Added Associations]\ntext/plain=;\n", TextAdded, "[Added Associations]\ntext/plain=;Quillmark.desktop;\n"},
    {"[Default Applications\ntext/plain\n=\n[[\n\xff\xfe\n", TextDefault,
     "[Default Applications\ntext/plain\n=\n[[\n\xff\xfe\n[Default Applications]\ntext/plain=Quillmark.desktop;\n"},
};

}  // namespace

TEST(MimeAppsListText, EachEditIsMadeAndUndone) {
    for (const Row& row : Rows) {
        Marks marks;
        EXPECT_EQ(inserted(row.before, row.edit, marks), row.after) << row.before;
        EXPECT_TRUE(MimeAppsList::isInserted(row.edit.group, row.edit.type, marks)) << row.before;
        EXPECT_EQ(removed(row.after, row.edit, marks), row.before) << row.before;
        EXPECT_EQ(marks, Marks()) << row.before;
    }
}

TEST(MimeAppsListText, WhatIsThereAlreadyIsNotInsertedAndNotRemoved) {
    const std::tuple<QByteArray, Edit> rows[] = {
        {"[Default Applications]\ntext/plain=Quillmark.desktop;vim.desktop\n", TextDefault},
        {"[Added Associations]\ntext/plain=vim.desktop;Quillmark.desktop\n", TextAdded},
    };
    for (const auto& [bytes, edit] : rows) {
        Marks marks;
        EXPECT_EQ(inserted(bytes, edit, marks), bytes);
        EXPECT_EQ(marks, Marks());
        EXPECT_EQ(removed(bytes, edit, marks), bytes);
    }
}

TEST(MimeAppsListText, ASecondInsertChangesNothing) {
    Marks marks;
    const QByteArray once = inserted("[Default Applications]\ntext/plain=vim.desktop\n", TextDefault, marks);
    const Marks before = marks;
    EXPECT_EQ(inserted(once, TextDefault, marks), once);
    EXPECT_EQ(marks, before);
}

TEST(MimeAppsListText, WhatOthersMovedDownIsInsertedOnceAndRemovedWhole) {
    Marks marks;
    inserted("", TextDefault, marks);
    const QByteArray moved = "[Default Applications]\ntext/plain=gedit.desktop;Quillmark.desktop;\n";
    const QByteArray again = inserted(moved, TextDefault, marks);
    EXPECT_EQ(again, "[Default Applications]\ntext/plain=Quillmark.desktop;gedit.desktop;\n");
    EXPECT_EQ(removed(again, TextDefault, marks), "[Default Applications]\ntext/plain=gedit.desktop;\n");
}

TEST(MimeAppsListText, WhatOthersWroteMeanwhileStays) {
    const std::tuple<QByteArray, QByteArray> rows[] = {
        // Rewritten without a separator at the end.
        {"[Default Applications]\ntext/plain=gedit.desktop;Quillmark.desktop\n",
         "[Default Applications]\ntext/plain=gedit.desktop\n"},
        {"[Default Applications]\ntext/plain=Quillmark.desktop\n", ""},
        // Another key in the group, another group, and a file without our mention.
        {"[Default Applications]\ntext/plain=Quillmark.desktop;\na/b=c;\n", "[Default Applications]\na/b=c;\n"},
        {"[Default Applications]\ntext/plain=Quillmark.desktop;\n\n[Other]\nx\n", "\n[Other]\nx\n"},
        {"[Default Applications]\ntext/plain=gedit.desktop;\n", "[Default Applications]\ntext/plain=gedit.desktop;\n"},
        {"", ""},
    };
    for (const auto& [rewritten, left] : rows) {
        Marks marks;
        inserted("", TextDefault, marks);
        EXPECT_EQ(removed(rewritten, TextDefault, marks), left) << rewritten.constData();
        EXPECT_FALSE(MimeAppsList::isInserted(Group::Default, "text/plain", marks));
    }
}

TEST(MimeAppsListText, AnAppendedLineKeepsItsEnd) {
    Marks marks;
    const QByteArray with = inserted("# mine", TextDefault, marks) + "[Other]\nx=y\n";
    EXPECT_EQ(removed(with, TextDefault, marks), "# mine\n[Other]\nx=y\n");
}

TEST(MimeAppsListText, ProgramsAreListedInTheirOrder) {
    const MimeAppsList list(
        "[Default Applications]\ntext/plain= a.desktop ;;b.desktop\n[Added Associations]\n"
        "text/plain=c.desktop\n[Default Applications]\ntext/plain=d.desktop;\n",
        Ours);
    EXPECT_EQ(list.applications(Group::Default, "text/plain"),
              (QList<QByteArray>{"a.desktop", "b.desktop", "d.desktop"}));
    EXPECT_EQ(list.applications(Group::Added, "text/plain"), QList<QByteArray>{"c.desktop"});
    EXPECT_EQ(list.applications(Group::Added, "text/html"), QList<QByteArray>());
}

/// Files made of the pieces that such files are made of, whole and broken: any edits, undone in any order, lead back.
TEST(MimeAppsListText, EditsOfGeneratedFilesAreUndoneInAnyOrder) {
    const QByteArray pieces[] = {
        "[Default Applications]",
        "[Added Associations]",
        "[Removed Associations]",
        "[",
        "text/plain=",
        "text/html =",
        "text/plain",
        "vim.desktop",
        "Quillmark.desktop",
        ";",
        "=",
        "\n",
        "\n",
        "\n",
        "\r\n",
        "# mine",
        " ",
        "a/b=c",
        QByteArray("\0", 1),
        "\xff",
    };
    std::vector<Edit> edits;
    for (const Group group : {Group::Default, Group::Added}) {
        for (const char* type : {"text/plain", "text/html", "text/x-new"})
            edits.push_back({group, type});
    }
    std::mt19937 random(7);
    for (int round = 0; round < 5000; ++round) {
        QByteArray before;
        for (auto count = random() % 30; count > 0; --count)
            before += pieces[random() % std::size(pieces)];
        Marks marks;
        QByteArray bytes = before;
        std::ranges::shuffle(edits, random);
        for (const Edit& edit : edits)
            bytes = inserted(bytes, edit, marks);
        for (const Edit& edit : edits) {
            const QList<QByteArray> programs = MimeAppsList(bytes, Ours).applications(edit.group, edit.type);
            ASSERT_TRUE(edit.group == Group::Added ? programs.contains(Ours) : programs.value(0) == Ours)
                << before.toPercentEncoding().constData();
        }
        std::ranges::shuffle(edits, random);
        for (const Edit& edit : edits)
            bytes = removed(bytes, edit, marks);
        ASSERT_EQ(bytes, before) << before.toPercentEncoding().constData();
        ASSERT_EQ(marks, Marks()) << before.toPercentEncoding().constData();
    }
}
