#include "gui/app/SearchWindow.h"

#include "core/app/AppDelegate.h"
#include "gui/windows/LyricSearchWC.h"

#include <QLineEdit>

SearchWindow::SearchWindow(AppDelegate& delegate, std::unique_ptr<QObject> fetcher,
                           const QString& fetcherName, const QString& lyricServerHost)
    : m_delegate(delegate)
    , m_fetcher(std::move(fetcher))
    , m_window(std::make_unique<LyricSearchWC>())
{
    m_window->setDelegate(this);
    m_window->setLyricServerHost(lyricServerHost);
    m_window->setLyricFetcher(m_fetcher.get(), fetcherName);
}

// The window goes first: it may still hold the fetcher as its delegate.
SearchWindow::~SearchWindow()
{
    m_window.reset();
}

void SearchWindow::showFor(const QString& title, const QString& artist, double duration)
{
    m_window->setSongDuration(duration);
    m_window->showWindow();
    m_window->textTitle()->setText(title);
    m_window->textArtist()->setText(artist);
    m_window->textTitle()->selectAll(); // typing replaces the title
}

void SearchWindow::setupLRCcontent(const QString& text)
{
    m_delegate.setupLRCcontent(text);
}
