#pragma once

#include <QString>

class Prompts;
class Settings;
class WorkspaceHost;

/// What the widgets of the side panel use. The frame owns all of it, and it outlives the panel.
struct WorkspaceServices {
    Prompts& prompts;
    Settings& settings;
    WorkspaceHost& host;
};
