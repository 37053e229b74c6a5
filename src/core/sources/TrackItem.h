#pragma once

#include <QString>

#include <cstdint>
#include <mutex>

// What every now-playing record answers.
class TrackItemProtocol {
public:
    virtual ~TrackItemProtocol() = default;
    virtual QString album() const = 0;
    virtual QString artist() const = 0;
    virtual QString title() const = 0;
    virtual std::int64_t length() const = 0;
};

// A song record. The strings are read and written under a lock; length is never set by any
// source and stays 0.
class TrackItem : public TrackItemProtocol {
public:
    QString album() const override;
    QString artist() const override;
    QString title() const override;
    std::int64_t length() const override { return m_length; }
    void setAlbum(const QString& album);
    void setArtist(const QString& artist);
    void setTitle(const QString& title);
    void setLength(std::int64_t length) { m_length = length; }

private:
    mutable std::mutex m_mutex;
    QString m_album;
    QString m_artist;
    QString m_title;
    std::int64_t m_length = 0;
};
