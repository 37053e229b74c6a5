#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

class AppDelegate;
class QObject;

// The lyric plug-in: loading it at start-up, asking it, and checking its answers. A plug-in
// is outside code: an answer that was not asked for (a second one), one that never comes,
// and results or texts that are not lyrics are each reported in the system log once, and
// never reach the displays or the lyrics folder.
class PluginHost {
public:
    static constexpr int kAnswerLimitMs = 30000;

    explicit PluginHost(AppDelegate& d)
        : d(d)
    {
    }

    QStringList allBundles() const;
    std::unique_ptr<QObject> loadLyricPlugin();
    // Start-up: keep the plug-in, become its delegate, record it in the settings.
    void install();

    void search(const QString& artist, const QString& song, const QString& album, double duration);
    void download(const QVariant& item);

    // Whether an answer of the plug-in is to be taken (false: logged and dropped).
    bool acceptList(const QVariantList& items);
    bool acceptListFailure();
    bool acceptContent(const QString& text);
    bool acceptContentFailure();

private:
    bool answerExpected(int& asked, int& answered, const char* what);
    void watch(int& answered, int serial, const QString& what);
    bool call(const char* method, const std::function<bool(QObject*)>& invoke);

    AppDelegate& d;
    QString m_info;
    int m_listsAsked = 0;
    int m_listsAnswered = 0;
    int m_contentsAsked = 0;
    int m_contentsAnswered = 0;
};
