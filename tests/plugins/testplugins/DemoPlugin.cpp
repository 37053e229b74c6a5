// A plug-in for the loader's tests: its name, version and behaviour come from the build.
// instance() appends the name to the file named by VERSEWICK_TEST_PLUGIN_LOG, so a test can
// tell which plug-ins were instantiated, and in which order.
#include <QFile>
#include <QObject>
#include <QtPlugin>

class DemoPlugin : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.morvane.Versewick.LrcPlugin/1")
public:
    Q_INVOKABLE QObject* instance()
    {
        QFile log(qEnvironmentVariable("VERSEWICK_TEST_PLUGIN_LOG"));
        if (log.open(QIODevice::Append))
            log.write(TEST_PLUGIN_NAME "\n");
        if (TEST_PLUGIN_NULL_INSTANCE)
            return nullptr;
        auto* fetcher = new QObject(this); // the loader must take it over
        fetcher->setObjectName(QStringLiteral(TEST_PLUGIN_NAME));
        return fetcher;
    }
    Q_INVOKABLE QString name() const { return QStringLiteral(TEST_PLUGIN_NAME); }
    Q_INVOKABLE qint64 version() const { return TEST_PLUGIN_VERSION; }
};

#include "DemoPlugin.moc"
