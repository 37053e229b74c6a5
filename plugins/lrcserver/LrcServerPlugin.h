#pragma once

#include <QObject>
#include <QString>
#include <QtPlugin>

// The principal class of lrcserver.bundle.
class LrcServerPlugin : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.morvane.Versewick.LrcPlugin/1")
public:
    Q_INVOKABLE QObject* instance();
    Q_INVOKABLE QString name() const { return QStringLiteral("Lyric server"); }
    Q_INVOKABLE qint64 version() const { return 1; }
};
