// The editor's "Publish...": a confirmation, then the publisher with a progress dialog.
#include "gui/windows/LyricEditorWindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>

void LyricEditorWindow::publish()
{
    const auto song = m_host.song ? m_host.song() : std::nullopt;
    if (!song || song->trackName.isEmpty() || m_model.draft().timedCount() == 0) {
        m_status->setText(tr("Only a timed lyric of a song playing can be published."));
        return;
    }
    if (m_publisher && m_publisher->isRunning())
        return;
    const QUrl base = LrclibPublisher::configuredUrl();
    const auto answer = QMessageBox::question(
        this, tr("Publish"),
        tr("Publish the lyric of \"%1\" by %2 to LRCLIB (%3) for everyone to use?")
            .arg(song->trackName, song->artistName, base.host()));
    if (answer != QMessageBox::Yes)
        return;
    LrclibPublisher::Song sent = *song;
    sent.syncedLyrics = m_model.draft().toLrc();
    sent.plainLyrics = m_model.draft().plainText();
    if (!m_publisher) {
        m_publisher = std::make_unique<LrclibPublisher>();
        connect(m_publisher.get(), &LrclibPublisher::progress, this,
                &LyricEditorWindow::publishProgress);
        connect(m_publisher.get(), &LrclibPublisher::finished, this, &LyricEditorWindow::published);
    }
    if (!m_progress) {
        m_progress = new QProgressDialog(this);
        m_progress->setWindowTitle(tr("Publish"));
        m_progress->setRange(0, 0);
        m_progress->setAutoClose(false);
        m_progress->setAutoReset(false);
        connect(m_progress, &QProgressDialog::canceled, m_publisher.get(),
                &LrclibPublisher::cancel);
    }
    m_progress->show();
    m_publisher->start(base, sent);
}

void LyricEditorWindow::publishProgress(LrclibPublisher::Stage stage, quint64 hashes)
{
    if (!m_progress)
        return;
    switch (stage) {
    case LrclibPublisher::Stage::Challenge:
        m_progress->setLabelText(tr("Asking LRCLIB for a challenge..."));
        break;
    case LrclibPublisher::Stage::Solving:
        m_progress->setLabelText(tr("Solving the challenge: %L1 hashes tried...").arg(hashes));
        break;
    case LrclibPublisher::Stage::Publishing:
        m_progress->setLabelText(tr("Publishing..."));
        break;
    }
}

void LyricEditorWindow::published(bool /*ok*/, const QString& message)
{
    if (m_progress)
        m_progress->hide();
    m_status->setText(message);
}
