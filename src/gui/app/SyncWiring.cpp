#include "gui/app/SyncWiring.h"

#include "core/app/AppDelegate.h"
#include "core/app/SyncControls.h"
#include "gui/app/LyricPanel.h"
#include "gui/display/AppController.h"
#include "gui/display/HUDWindow.h"
#include "gui/display/OffsetNotice.h"
#include "gui/display/SingleLineModeController.h"
#include "gui/display/SyncInput.h"

#include <QCoreApplication>
#include <QPointer>

SyncWiring::SyncWiring(AppDelegate& app, AppController& scrolling, LyricPanel& panel,
                       SingleLineModeController& strip)
{
    QPointer<AppDelegate> controller(&app);
    QPointer<AppController> views(&scrolling);
    SyncInput::Targets targets{[views]() -> LRCView* { return views ? views->lrcView() : nullptr; },
                               [&panel, &strip](const QWidget* window) {
                                   return window &&
                                          (window == panel.window() ||
                                           (strip.isWindowLoaded() && window == strip.window()));
                               }};
    m_input = std::make_unique<SyncInput>(
        std::move(targets),
        [controller](double delta) {
            if (controller)
                controller->sync().nudgeOffset(delta);
        },
        [controller](float seconds) {
            if (controller)
                controller->sync().seek(seconds, [](bool) {});
        });
    qApp->installEventFilter(m_input.get());
    m_notice = std::make_unique<OffsetNotice>(
        [&strip]() -> QWidget* { return strip.isWindowLoaded() ? strip.window() : nullptr; });
    QObject::connect(&app.sync(), &SyncControls::offsetNudged, m_notice.get(), &OffsetNotice::show);
    QObject::connect(m_notice.get(), &OffsetNotice::areaChanged, &strip,
                     &SingleLineModeController::setOverlay);
}

SyncWiring::~SyncWiring() = default;
