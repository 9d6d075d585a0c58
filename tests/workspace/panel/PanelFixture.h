#pragma once

#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/ScriptedPrompts.h"
#include "workspace/host/NotedHost.h"
#include "workspace/panel/ucExplorer.h"

#include <QApplication>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

/// A side panel on an offscreen display.
class PanelFixture : public testing::Test {
 protected:
    static constexpr QSize Size{240, 640};

    PanelFixture() { m_panel->resize(Size); }

    void showPanel() {
        m_panel->show();
        m_panel->activateWindow();
        QCoreApplication::processEvents();
    }

    template <typename Widget = QWidget>
    Widget& part(const QString& name) const {
        Widget* found = m_panel->findChild<Widget*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return *found;
    }
    QWidget& band(int tab) const { return part(u"picTitle(%1)"_qs.arg(tab)); }
    QWidget& button(const char* key) const { return part(u"tbToolBar."_qs + QLatin1String(key)); }
    QList<bool> openTabs() const { return {!band(0).isHidden(), !band(1).isHidden(), !band(2).isHidden()}; }
    QList<int> tops() const {
        return {band(0).property("Top").toInt(), band(1).property("Top").toInt(), band(2).property("Top").toInt()};
    }

    ScriptedPrompts m_prompts;
    MemoryRegistry m_registry;
    Settings m_settings{m_registry};
    NotedHost m_host;
    std::unique_ptr<ucExplorer> m_panel =
        std::make_unique<ucExplorer>(WorkspaceServices{m_prompts, m_settings, m_host});
};
