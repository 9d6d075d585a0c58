// Any bytes as a list of the programs for file types: edits take effect, and undoing them in any order leads back. The
// first byte says which edits are made, the second which are undone first.

#include "FuzzEntry.h"
#include "settings/desktop/MimeAppsList.h"

#include <iterator>

namespace {

using Group = MimeAppsList::Group;

const QByteArray Ours = "Quillmark.desktop";

struct Edit {
    Group group;
    QByteArray type;
};

const Edit Edits[] = {
    {Group::Default, "text/plain"}, {Group::Added, "text/plain"}, {Group::Default, "a/b"},
    {Group::Added, "a/b"},          {Group::Default, "a/c"},      {Group::Added, "a/c"},
};

bool isChosen(unsigned choice, std::size_t edit) {
    return ((choice >> edit) & 1U) != 0;
}

class EditedList {
 public:
    explicit EditedList(const QByteArray& bytes) : m_bytes(bytes) {}

    void insert(const Edit& edit) {
        MimeAppsList list(m_bytes, Ours);
        list.insert(edit.group, edit.type, m_marks);
        m_bytes = list.bytes();
        const QList<QByteArray> programs = list.applications(edit.group, edit.type);
        require(edit.group == Group::Default ? programs.value(0) == Ours : programs.contains(Ours));
    }

    void remove(const Edit& edit) {
        MimeAppsList list(m_bytes, Ours);
        list.remove(edit.group, edit.type, m_marks);
        m_bytes = list.bytes();
    }

    bool isBack(const QByteArray& bytes) const { return m_bytes == bytes && m_marks.isEmpty(); }

 private:
    QByteArray m_bytes;
    MimeAppsList::Marks m_marks;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const QByteArray bytes = viewOf(data + 2, size - 2).toByteArray();
    require(MimeAppsList(bytes, Ours).bytes() == bytes);
    EditedList list(bytes);
    for (std::size_t i = 0; i < std::size(Edits); ++i) {
        if (isChosen(data[0], i))
            list.insert(Edits[i]);
    }
    for (const bool first : {true, false}) {
        for (std::size_t i = 0; i < std::size(Edits); ++i) {
            if (isChosen(data[1], i) == first)
                list.remove(Edits[i]);
        }
    }
    require(list.isBack(bytes));
    return 0;
}
