// A plug-in whose principal class has a name and a version but no instance().
#include <QObject>
#include <QtPlugin>

class NoInstancePlugin : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.morvane.Versewick.LrcPlugin/1")
public:
    Q_INVOKABLE QString name() const { return QStringLiteral("NoInstance"); }
    Q_INVOKABLE qint64 version() const { return 1; }
};

#include "NoInstancePlugin.moc"
