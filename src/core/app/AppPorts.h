#pragma once

class DesktopPort;
class LyricViewPort;
class SingleLinePort;
class WindowFactoryPort;
class WindowPort;

// What the controller commands, reached through interfaces so that it runs without a display:
// windows to show, close and reload, files and pages to open. What it shows goes to AppState.
// Not owned; any of them may be null (nothing is there).
struct AppPorts {
    LyricViewPort* appController = nullptr;
    SingleLinePort* singleLineControl = nullptr;
    WindowPort* uiLRCpanel = nullptr;
    WindowFactoryPort* windows = nullptr;
    DesktopPort* desktop = nullptr;
};
