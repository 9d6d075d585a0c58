#pragma once

#include <QtGlobal>

#include <array>

class Settings;
class ShellServices;
struct Options;

/// The values of the general page.
struct GeneralValues {
    /// The settings that are on or off, in the order in which they are shown and saved.
    enum Box {
        LoadLastFiles,
        WorkingFolder,
        NewDocument,
        ShowPath,
        ShowIcon,
        LoadLastFolder,
        RowHighlight,
        CheckHex,
        ClearRedo,
        XPSkin,
        Boxes
    };
    /// The shortcuts, in the order in which they are saved.
    enum Shortcut { Startup, Desktop, Program, Shortcuts };

    std::array<bool, Boxes> boxes{};
    std::array<bool, Shortcuts> shortcuts{};
    bool modifyNotice = true;
    bool contextMenu = false;    ///< the entry in the context menu of the desktop
    qint32 highlightColour = 0;  ///< of the cursor row, blue-green-red

    bool operator==(const GeneralValues&) const = default;
};

/// Loads and saves the general page: the settings, the options of the running program that follow them at once, and
/// what stands on the desktop. Owned by the page; all three services outlive it. A failed write is not reported.
class GeneralProperties {
 public:
    GeneralProperties(Settings& settings, Options& options, ShellServices& shell);

    /// A text that is not valid counts as the option of the running program.
    GeneralValues load();
    /// The options that are not named in it are read by the next start only. Whether the context menu is changed
    /// depends on what was loaded or saved last. The message of a failed registration runs the event loop.
    void save(const GeneralValues& values);
    /// Reads again what is not a setting: the shortcuts and the entry of the context menu.
    void readDesktop(GeneralValues& values);

 private:
    void saveBoxes(const GeneralValues& values);
    void saveHighlight(const GeneralValues& values);
    void saveShortcuts(const GeneralValues& values);

    Settings& m_settings;
    Options& m_options;
    ShellServices& m_shell;
    bool m_contextMenu = false;  ///< as it was read last
};
