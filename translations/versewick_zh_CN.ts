<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AppDelegate</name>
    <message>
        <source>fetching lyrics...</source>
        <translation>正在获取歌词…</translation>
    </message>
    <message>
        <source>lyric is not available</source>
        <translation>暂无歌词</translation>
    </message>
    <message>
        <source>No Music Source</source>
        <translation>无音乐来源</translation>
    </message>
    <message>
        <source>iTunes is not running</source>
        <translation>iTunes 未运行</translation>
    </message>
    <message>
        <source>iTunes is not playing</source>
        <translation>iTunes 未在播放</translation>
    </message>
    <message>
        <source>QQMusic is not playing</source>
        <translation>QQ音乐未在播放</translation>
    </message>
    <message>
        <source>Jukora is not playing</source>
        <translation>Jukora 未在播放</translation>
    </message>
    <message>
        <source>%1 is not playing</source>
        <translation>%1 未在播放</translation>
    </message>
    <message>
        <source>Show LRC</source>
        <translation>显示歌词</translation>
    </message>
    <message>
        <source>Hide LRC</source>
        <translation>隐藏歌词</translation>
    </message>
    <message>
        <source>iTunes</source>
        <translation>iTunes</translation>
    </message>
    <message>
        <source>Jukora</source>
        <translation>Jukora</translation>
    </message>
    <message>
        <source>QQ音乐</source>
        <translation>QQ音乐</translation>
    </message>
</context>
<context>
    <name>LyricManagerWC</name>
    <message>
        <source>Lyric Manager</source>
        <translation>歌词管理器</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Artist or Song</source>
        <translation>歌手或歌曲</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>歌手</translation>
    </message>
    <message>
        <source>Song</source>
        <translation>歌曲</translation>
    </message>
    <message>
        <source>Search In</source>
        <translation>搜索范围</translation>
    </message>
    <message>
        <source>Open in Text Editor</source>
        <translation>在文本编辑器中打开</translation>
    </message>
    <message>
        <source>Show in File Manager</source>
        <translation>在文件管理器中显示</translation>
    </message>
    <message>
        <source>Select Lyric of Playing Song</source>
        <translation>选中正在播放歌曲的歌词</translation>
    </message>
    <message>
        <source>Rescan Lyrics Folder</source>
        <translation>重新扫描歌词文件夹</translation>
    </message>
    <message>
        <source>Open Lyrics Folder</source>
        <translation>打开歌词文件夹</translation>
    </message>
    <message>
        <source>Playing Song</source>
        <translation>正在播放</translation>
    </message>
    <message>
        <source>Rescan</source>
        <translation>重新扫描</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>打开文件夹</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no longer in the lyrics folder. Rescan to update the list.</source>
        <translation>“%1”已不在歌词文件夹中，请重新扫描以更新列表。</translation>
    </message>
    <message>
        <source>Total %1 items</source>
        <translation>共 %1 项</translation>
    </message>
</context>
<context>
    <name>LyricSearchWC</name>
    <message>
        <source>Search Lyrics</source>
        <translation>搜索歌词</translation>
    </message>
    <message>
        <source>Lyric server</source>
        <translation>歌词服务器</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Title</source>
        <translation>歌名</translation>
    </message>
    <message>
        <source>Artist</source>
        <translation>歌手</translation>
    </message>
    <message>
        <source>Artist:</source>
        <translation>歌手：</translation>
    </message>
    <message>
        <source>Title:</source>
        <translation>歌名：</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>Searching…</source>
        <translation>正在搜索…</translation>
    </message>
    <message>
        <source>The lyric server did not answer. Try again later.</source>
        <translation>歌词服务器没有响应，请稍后重试。</translation>
    </message>
    <message>
        <source>No lyrics found.</source>
        <translation>未找到歌词。</translation>
    </message>
    <message>
        <source>Downloading…</source>
        <translation>正在下载…</translation>
    </message>
    <message>
        <source>The search failed.</source>
        <translation>搜索失败。</translation>
    </message>
    <message>
        <source>The search failed: %1</source>
        <translation>搜索失败：%1</translation>
    </message>
    <message numerus="yes">
        <source>%n result(s). Double-click one to use it.</source>
        <translation>
            <numerusform>共 %n 个结果，双击即可使用。</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>NSArrayControllerLyric</name>
    <message>
        <source>Artist</source>
        <translation>歌手</translation>
    </message>
    <message>
        <source>Song</source>
        <translation>歌曲</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>文件名</translation>
    </message>
</context>
<context>
    <name>T</name>
    <message>
        <source>%d分钟前</source>
        <translation>%d分钟前</translation>
    </message>
    <message>
        <source>%d小时前</source>
        <translation>%d小时前</translation>
    </message>
    <message>
        <source>%d天前</source>
        <translation>%d天前</translation>
    </message>
    <message>
        <source>刚刚</source>
        <translation>刚刚</translation>
    </message>
</context>
</TS>
