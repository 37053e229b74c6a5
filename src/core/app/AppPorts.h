#pragma once

class DesktopPort;
class LyricPanelPort;
class LyricViewPort;
class SingleLinePort;
class StatusMenuPort;
class WindowFactoryPort;

// Everything the controller shows, reached through interfaces so that it runs without a
// display. Not owned; any of them may be null (nothing is shown there).
struct AppPorts {
    LyricViewPort* appController = nullptr;
    SingleLinePort* singleLineControl = nullptr;
    LyricPanelPort* uiLRCpanel = nullptr;
    StatusMenuPort* statusMenu = nullptr;
    WindowFactoryPort* windows = nullptr;
    DesktopPort* desktop = nullptr;
};
