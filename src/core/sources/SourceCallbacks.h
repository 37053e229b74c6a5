#pragma once

#include <QByteArray>
#include <QMetaMethod>
#include <QObject>
#include <QPointer>

// The target-and-selector callback contract of the player sources: both callbacks take no
// argument and are sent as the named method ("songChanged") of the target, only when the
// target has it. The target is not owned; one that is gone is not called.
class SourceCallbacks {
public:
    void set(QObject* target, const QByteArray& songChanged, const QByteArray& appStateChanged)
    {
        m_target = target;
        m_selectorSongChanged = songChanged;
        m_selectorAppWillTerminal = appStateChanged;
    }
    void sendSongChanged() const { send(m_selectorSongChanged); }
    void sendAppStateChanged() const { send(m_selectorAppWillTerminal); }
    QObject* target() const { return m_target; }
    const QByteArray& selectorSongChanged() const { return m_selectorSongChanged; }
    const QByteArray& selectorAppWillTerminal() const { return m_selectorAppWillTerminal; }

private:
    void send(const QByteArray& selector) const
    {
        if (!m_target || selector.isEmpty())
            return;
        const int index = m_target->metaObject()->indexOfMethod((selector + "()").constData());
        if (index >= 0)
            m_target->metaObject()->method(index).invoke(m_target, Qt::DirectConnection);
    }

    QPointer<QObject> m_target;
    QByteArray m_selectorSongChanged;
    QByteArray m_selectorAppWillTerminal;
};
