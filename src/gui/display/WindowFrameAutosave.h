#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QString>

#include <optional>

class QSettings;
class QWidget;

// Remembers a window's frame in the settings store under "frames/<name>" whenever the window
// moves or is resized, and answers the frame saved by an earlier run.
class WindowFrameAutosave : public QObject {
    Q_OBJECT
public:
    WindowFrameAutosave(QWidget* window, QString name, QSettings* store);

    static QString keyFor(const QString& name) { return QStringLiteral("frames/") + name; }
    std::optional<QRect> savedFrame() const;
    void save();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_window;
    QString m_name;
    QPointer<QObject> m_storeGuard;
    QSettings* m_store;
};
