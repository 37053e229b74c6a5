#pragma once

#include "core/app/AppPorts.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

class AppState;
class Lyric;
class LyricControl;
class PLHttpClient;
class PlayerSource;
class PluginHost;
class QNetworkAccessManager;
class SearchWindowPort;
class ServiceAddresses;
class Settings;
struct ShownLyric;

// Installing what the lookup or the plug-in found, asking the plug-in when nothing was at
// hand, saving a lyric by the user's settings and the followed player's rules, sharing online
// finds, and the manual search.
class LyricAcquisition : public QObject {
    Q_OBJECT
public:
    // What it is built on besides its references.
    struct Context {
        AppPorts ports;                           // the view (setParser), the desktop (help page)
        QNetworkAccessManager* network = nullptr; // for the sharing upload; null: the thread's
        QObject* httpDelegate = nullptr;          // told of the upload's answer
        std::function<std::unique_ptr<SearchWindowPort>()> searchWindow;
        std::function<LyricControl*()> store; // the lyric store; may be null
    };

    LyricAcquisition(Settings& settings, ServiceAddresses& addresses, AppState& state,
                     ShownLyric& shown, PluginHost& plugin, Context context);
    ~LyricAcquisition() override;

    void installStored(std::unique_ptr<Lyric> lyric, int source);
    // Nothing at hand for the song: the plug-in is asked.
    void storeMissed(const QString& artist, const QString& song);
    void listFetched(const QVariantList& items);
    void contentFetched(const QString& text, const QVariant& item);
    void notAvailable();
    void lrcFetched(Lyric& lyric, int source);
    void forceWriteLyric(Lyric& lyric);
    void showSearchWindow();
    void setupLRCcontent(const QString& text);
    // A lyric from the editor: a new document, so nothing of the old one (its offset tag)
    // carries over; then installed as a pick by hand.
    void installEdited(const QString& text);
    // An unsynced lyric found online: shown unlit, Synced false, the status "unsynced lyric".
    void installPlain(const QString& text);
    // The installed lyric's text when it is unsynced, else null.
    QString plainText() const;

    // The form the sharing service takes, each value escaped.
    static QString uploadBody(const QString& artist, const QString& content, const QString& title);

public Q_SLOTS:
    // The player followed now (null: none); its rules say how its lyrics are saved.
    void setPlayer(PlayerSource* player) { m_player = player; }

Q_SIGNALS:
    // A lyric is on the displays, from this origin (AppState::Origin).
    void lyricInstalled(int origin);
    // The user picked a lyric by hand: the displays reload their settings.
    void lyricPickedByHand();
    // A message for the displays; empty clears it.
    void statusChanged(const QString& status);

private:
    void installed(int origin, bool synced = true);
    void upload(const QString& artist, const QString& content, const QString& title);
    void save(Lyric& lyric, int origin, bool toDisk, bool overwrite);
    // Writes to the lyrics folder; reports in the system log when the file did not land.
    void saveToFolder(LyricControl& store, const Lyric& lyric, const QString& artist,
                      const QString& title, bool overwrite);

    Settings& m_settings;
    ServiceAddresses& m_addresses;
    AppState& m_state;
    ShownLyric& m_shown;
    PluginHost& m_plugin;
    Context m_context;
    QPointer<PlayerSource> m_player;
    std::unique_ptr<SearchWindowPort> m_searchWC;
    std::unique_ptr<PLHttpClient> m_poster;
    bool m_plainShown = false; // the document holds an unsynced text: never saved
};
