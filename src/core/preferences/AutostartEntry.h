#pragma once

#include <QString>

// The XDG autostart entry that starts Versewick when the user logs in:
// $XDG_CONFIG_HOME/autostart/com.morvane.Versewick.desktop (~/.config when the variable is unset
// or not absolute). The file's presence is the state, so a user who deletes it by hand has turned
// the start at login off; there is no setting beside it that could disagree.
class AutostartEntry {
public:
    // The entry starts `program` (the running executable by default).
    explicit AutostartEntry(QString filePath = defaultFilePath(), QString program = {});

    static QString defaultFilePath();
    QString filePath() const { return m_filePath; }

    bool isEnabled() const;
    // Writes the entry atomically (a complete file or none) or removes it. Answers an empty
    // string on success, otherwise one sentence for the user; a failed write leaves no file.
    QString setEnabled(bool on) const;

    // The entry's text; the program path quoted as the desktop entry format wants.
    static QByteArray contents(const QString& program);

private:
    QString m_filePath;
    QString m_program;
};
