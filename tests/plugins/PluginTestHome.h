#pragma once

#include "support/RawHttpServer.h"
#include "support/TempHome.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

// A temporary home for the whole test process, whose settings file names a fake server on
// 127.0.0.1 under [services]. Process-wide because Qt reads the settings folder only once.
class PluginTestHome : public ::testing::Environment {
public:
    using Value = std::function<QString(const RawHttpServer&)>;
    PluginTestHome(QByteArray key, Value value)
        : m_key(std::move(key))
        , m_value(std::move(value))
    {
    }
    void SetUp() override
    {
        m_home = std::make_unique<TempHome>();
        s_folders = std::make_unique<ScopedUserFolders>(*m_home);
        s_server = std::make_unique<RawHttpServer>();
        QDir().mkpath(s_folders->configHome() + "/morvane");
        QFile ini(s_folders->configHome() + "/morvane/Versewick.ini");
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("[services]\n" + m_key + '=' + m_value(*s_server).toUtf8() + '\n');
    }
    void TearDown() override
    {
        s_server.reset();
        s_folders.reset();
        m_home.reset();
    }
    static RawHttpServer& server() { return *s_server; }
    static const ScopedUserFolders& folders() { return *s_folders; }

private:
    QByteArray m_key;
    Value m_value;
    std::unique_ptr<TempHome> m_home;
    static inline std::unique_ptr<ScopedUserFolders> s_folders;
    static inline std::unique_ptr<RawHttpServer> s_server;
};
