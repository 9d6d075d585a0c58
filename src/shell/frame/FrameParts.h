#pragma once

class CommandEntries;
class CoolBar;
class DocumentHost;
class DocumentTabs;
class PanelLink;
class FindBar;
class HelpPages;
class LanguageMenu;
class MacroMenu;
class MdiChildren;
class MenuSlots;
class Prompts;
class QWidget;
class RegistryStore;
class RoomsToCome;
class SearchToggles;
class Settings;
class StatusPanels;
class SystemClose;
struct DocumentServices;
struct Options;

/// What the frame is made of, for the classes that carry out its procedures. The frame owns all of it, or was given it
/// for its life, and fills every field before the first procedure runs.
struct FrameParts {
    QWidget* frame = nullptr;
    DocumentHost* host = nullptr;
    Prompts* prompts = nullptr;
    RegistryStore* registry = nullptr;
    Settings* settings = nullptr;
    Options* options = nullptr;
    DocumentServices* documentServices = nullptr;
    PanelLink* explorer = nullptr;
    RoomsToCome* rooms = nullptr;
    HelpPages* help = nullptr;
    MdiChildren* children = nullptr;
    DocumentTabs* tabs = nullptr;
    StatusPanels* status = nullptr;
    CoolBar* coolBar = nullptr;
    CommandEntries* commands = nullptr;
    MenuSlots* menuSlots = nullptr;
    LanguageMenu* languageMenu = nullptr;
    MacroMenu* macroMenu = nullptr;
    SearchToggles* searchToggles = nullptr;
    FindBar* findBar = nullptr;
    SystemClose* systemClose = nullptr;
};
