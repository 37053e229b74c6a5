#pragma once

#include "core/app/SearchWindowPort.h"
#include "core/online/LyricSearchDelegate.h"

#include <memory>

class AppDelegate;
class LyricSearchWC;
class QObject;

// The search-by-hand window for the controller. It has a plug-in fetcher of its own, so its
// searches never mix with the controller's; a pick goes to AppDelegate::setupLRCcontent.
class SearchWindow : public SearchWindowPort, public LyricSearchDelegate {
public:
    // fetcher: a fresh instance of the plug-in (null: the lyric server only); owned.
    SearchWindow(AppDelegate& delegate, std::unique_ptr<QObject> fetcher,
                 const QString& fetcherName, const QString& lyricServerHost);
    ~SearchWindow() override;

    void showFor(const QString& title, const QString& artist, double duration) override;
    void setupLRCcontent(const QString& text) override;

    LyricSearchWC* window() const { return m_window.get(); }

private:
    AppDelegate& m_delegate;
    std::unique_ptr<QObject> m_fetcher;
    std::unique_ptr<LyricSearchWC> m_window;
};
