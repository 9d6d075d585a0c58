#include "properties/ucPropFindReplace.h"

#include "settings/Settings.h"

#include <QCheckBox>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

struct BoxRow {
    const char* name;
    const char* caption;
    const char* key;
};

/// In the order in which they are shown and saved.
constexpr BoxRow Rows[] = {
    {"chkReg", QT_TRANSLATE_NOOP("ucPropFindReplace", "Enable &Regular Expression when searching in Toolbar"),
     "ToolbarRegExp"},
    {"chkCase", QT_TRANSLATE_NOOP("ucPropFindReplace", "Enable Case &Sensitive when searching in Toolbar"),
     "ToolbarCase"},
    {"chkContinue", QT_TRANSLATE_NOOP("ucPropFindReplace", "Enable Con&tinue to search at End/Start of the file"),
     "ContinueSearch"},
    {"chkWholeWord", QT_TRANSLATE_NOOP("ucPropFindReplace", "Enable Match &Whole Word Only when searching in Toolbar"),
     "ToolbarWholeWord"},
};

}  // namespace

ucPropFindReplace::ucPropFindReplace(Settings& settings, QWidget* parent) : QWidget(parent), m_settings(settings) {
    static_assert(std::size(Rows) == Boxes);
    setObjectName(u"ucPropFindReplace1"_qs);
    auto* rows = new QVBoxLayout(this);
    for (std::size_t i = 0; i < Boxes; ++i) {
        auto* box = new QCheckBox(tr(Rows[i].caption));
        box->setObjectName(QString::fromLatin1(Rows[i].name));
        connect(box, &QCheckBox::toggled, this, &ucPropFindReplace::alter);
        rows->addWidget(box);
        m_boxes.at(i) = box;
    }
    rows->addStretch(1);
}

void ucPropFindReplace::LoadProp() {
    const QScopedValueRollback filling(m_filling, true);
    for (std::size_t i = 0; i < Boxes; ++i)
        m_boxes.at(i)->setChecked(m_settings.forDialog(QLatin1String(Rows[i].key)) == QLatin1String("1"));
    m_changed = false;
}

void ucPropFindReplace::SaveProp() {
    if (!m_changed)
        return;
    for (std::size_t i = 0; i < Boxes; ++i)
        m_settings.write(QLatin1String(Rows[i].key), m_boxes.at(i)->isChecked() ? u"1"_qs : u"0"_qs);
    m_changed = false;
}

void ucPropFindReplace::alter() {
    if (m_filling)
        return;
    m_changed = true;
    Q_EMIT Changed();
}
