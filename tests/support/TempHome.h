#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A temporary folder with helpers to write files into it; tests never touch the real home.
class TempHome {
public:
    TempHome();
    QString path() const { return m_dir.path(); }
    QString filePath(const QString& name) const { return m_dir.filePath(name); }
    QString write(const QString& name, const QByteArray& bytes) const;

private:
    QTemporaryDir m_dir;
};

// Points HOME, XDG_CONFIG_HOME and XDG_DATA_HOME at folders of a TempHome for its lifetime.
class ScopedUserFolders {
public:
    explicit ScopedUserFolders(const TempHome& home);
    ~ScopedUserFolders();
    QString dataHome() const;
    QString configHome() const;

private:
    QString m_root;
    QByteArray m_saved[3];
};

// Captures the Qt message log for the life of the object.
class MessageCapture {
public:
    MessageCapture();
    ~MessageCapture();
    QStringList lines() const;
};
