<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AppController</name>
    <message>
        <source>Play a song in any MPRIS player (mpv, VLC, Rhythmbox, Spotify...)</source>
        <translation>在任意 MPRIS 播放器（mpv、VLC、Rhythmbox、Spotify……）中播放一首歌</translation>
    </message>
</context>
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
        <source>unsynced lyric</source>
        <translation>未同步的歌词</translation>
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
    <name>AppearancePanel</name>
    <message>
        <source>Lyric font:</source>
        <translation>歌词字体：</translation>
    </message>
    <message>
        <source>Single-line font:</source>
        <translation>单行歌词字体：</translation>
    </message>
    <message>
        <source>Lyric colour:</source>
        <translation>歌词颜色：</translation>
    </message>
    <message>
        <source>Highlighted colour:</source>
        <translation>高亮颜色：</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>恢复默认</translation>
    </message>
    <message>
        <source>Apply</source>
        <translation>应用</translation>
    </message>
    <message>
        <source>Choose…</source>
        <translation>选择…</translation>
    </message>
</context>
<context>
    <name>AutostartEntry</name>
    <message>
        <source>Could not remove %1: %2.</source>
        <translation>无法删除 %1：%2。</translation>
    </message>
    <message>
        <source>Could not create the folder %1.</source>
        <translation>无法创建文件夹 %1。</translation>
    </message>
    <message>
        <source>Could not write %1: %2.</source>
        <translation>无法写入 %1：%2。</translation>
    </message>
</context>
<context>
    <name>ColorWell</name>
    <message>
        <source>No colour</source>
        <translation>无颜色</translation>
    </message>
</context>
<context>
    <name>DesktopWindowFactory</name>
    <message>
        <source>About %1</source>
        <translation>关于 %1</translation>
    </message>
    <message>
        <source>&lt;b&gt;Versewick %1&lt;/b&gt;&lt;p&gt;Lyrics in time with the music you play.&lt;/p&gt;&lt;p&gt;%2&lt;/p&gt;</source>
        <translation>&lt;b&gt;Versewick %1&lt;/b&gt;&lt;p&gt;歌词随你播放的音乐同步显示。&lt;/p&gt;&lt;p&gt;%2&lt;/p&gt;</translation>
    </message>
</context>
<context>
    <name>LrclibPublisher</name>
    <message>
        <source>Publishing was cancelled.</source>
        <translation>已取消发布。</translation>
    </message>
    <message>
        <source>The service could not be reached (%1).</source>
        <translation>无法连接该服务（%1）。</translation>
    </message>
    <message>
        <source>The service sent a challenge that cannot be read.</source>
        <translation>服务发来的验证挑战无法读取。</translation>
    </message>
    <message>
        <source>The lyric was published.</source>
        <translation>歌词已发布。</translation>
    </message>
    <message>
        <source>The service refused the lyric: %1</source>
        <translation>服务拒绝了这份歌词：%1</translation>
    </message>
    <message>
        <source>The service refused the lyric (HTTP %1).</source>
        <translation>服务拒绝了这份歌词（HTTP %1）。</translation>
    </message>
</context>
<context>
    <name>LyricEditing</name>
    <message>
        <source>There is no song playing to save the lyric for.</source>
        <translation>没有正在播放的歌曲，无法保存歌词。</translation>
    </message>
    <message>
        <source>Time at least one line before saving the lyric.</source>
        <translation>请至少为一行歌词打上时间后再保存。</translation>
    </message>
    <message>
        <source>The song&apos;s name cannot be a file name in the lyrics folder.</source>
        <translation>这首歌的名字不能用作歌词文件夹中的文件名。</translation>
    </message>
    <message>
        <source>The lyric could not be written to %1.</source>
        <translation>无法将歌词写入 %1。</translation>
    </message>
</context>
<context>
    <name>LyricEditorModel</name>
    <message>
        <source>Tap</source>
        <translation>打点</translation>
    </message>
    <message>
        <source>Step Back</source>
        <translation>退回一行</translation>
    </message>
    <message>
        <source>Shift</source>
        <translation>平移</translation>
    </message>
    <message>
        <source>Edit Line</source>
        <translation>编辑歌词行</translation>
    </message>
    <message>
        <source>Edit Time</source>
        <translation>编辑时间</translation>
    </message>
    <message>
        <source>Edit Text</source>
        <translation>编辑文本</translation>
    </message>
</context>
<context>
    <name>LyricEditorWindow</name>
    <message>
        <source>Only a timed lyric of a song playing can be published.</source>
        <translation>只能发布正在播放歌曲的已打点歌词。</translation>
    </message>
    <message>
        <source>Publish</source>
        <translation>发布</translation>
    </message>
    <message>
        <source>Publish the lyric of &quot;%1&quot; by %2 to LRCLIB (%3) for everyone to use?</source>
        <translation>将 %2 的“%1”的歌词发布到 LRCLIB（%3）供所有人使用？</translation>
    </message>
    <message>
        <source>Asking LRCLIB for a challenge...</source>
        <translation>正在向 LRCLIB 请求验证挑战...</translation>
    </message>
    <message>
        <source>Solving the challenge: %L1 hashes tried...</source>
        <translation>正在解答验证挑战：已尝试 %L1 次哈希...</translation>
    </message>
    <message>
        <source>Publishing...</source>
        <translation>正在发布...</translation>
    </message>
    <message>
        <source>Lyric Editor</source>
        <translation>歌词编辑器</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Line</source>
        <translation>歌词</translation>
    </message>
    <message>
        <source>Tap</source>
        <translation>打点</translation>
    </message>
    <message>
        <source>Step Back</source>
        <translation>退回一行</translation>
    </message>
    <message>
        <source> s</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Shift All</source>
        <translation>整体平移</translation>
    </message>
    <message>
        <source>Edit as Text</source>
        <translation>以文本编辑</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Publish...</source>
        <translation>发布...</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>The player cannot seek.</source>
        <translation>播放器无法跳转。</translation>
    </message>
    <message>
        <source>No song is playing.</source>
        <translation>没有正在播放的歌曲。</translation>
    </message>
    <message>
        <source>%1 of %2 lines timed</source>
        <translation>已打点 %1 / %2 行</translation>
    </message>
    <message>
        <source>Saved.</source>
        <translation>已保存。</translation>
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
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
</context>
<context>
    <name>LyricPanel</name>
    <message>
        <source>Search lyrics</source>
        <translation>搜索歌词</translation>
    </message>
</context>
<context>
    <name>LyricSearchWC</name>
    <message>
        <source>Duration</source>
        <translation>时长</translation>
    </message>
    <message>
        <source>Synced</source>
        <translation>已同步</translation>
    </message>
    <message>
        <source>This lyric has no timing.</source>
        <translation>这份歌词没有时间标签。</translation>
    </message>
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
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
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
    <name>OffsetNudge</name>
    <message>
        <source>Offset %1 s</source>
        <translation>偏移 %1 秒</translation>
    </message>
</context>
<context>
    <name>PreferenceController</name>
    <message>
        <source>Traditional Chinese</source>
        <translation>繁体中文</translation>
    </message>
    <message>
        <source>Launch and quit with iTunes</source>
        <translation>随 iTunes 启动和退出</translation>
    </message>
    <message>
        <source>Show a notification when the song changes</source>
        <translation>切换歌曲时显示通知</translation>
    </message>
    <message>
        <source>Show the single-line background</source>
        <translation>显示单行歌词背景</translation>
    </message>
    <message>
        <source>Save downloaded lyrics to the lyrics folder</source>
        <translation>将下载的歌词保存到歌词文件夹</translation>
    </message>
    <message>
        <source>Save downloaded lyrics to the track&apos;s tags</source>
        <translation>将下载的歌词保存到歌曲标签</translation>
    </message>
    <message>
        <source>Send Feedback…</source>
        <translation>发送反馈…</translation>
    </message>
    <message>
        <source>Show Lyrics Folder</source>
        <translation>显示歌词文件夹</translation>
    </message>
    <message>
        <source>Lyric plug-in:</source>
        <translation>歌词插件：</translation>
    </message>
    <message>
        <source>How to Download Lyrics</source>
        <translation>如何下载歌词</translation>
    </message>
    <message>
        <source>Get the Jukora Player</source>
        <translation>获取 Jukora 播放器</translation>
    </message>
    <message>
        <source>No lyric plug-in is loaded.</source>
        <translation>未加载歌词插件。</translation>
    </message>
    <message>
        <source>General</source>
        <translation>通用</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Lyric</source>
        <translation>歌词</translation>
    </message>
    <message>
        <source>Start Versewick when I log in</source>
        <translation>登录时启动 Versewick</translation>
    </message>
</context>
<context>
    <name>ReadingGroup</name>
    <message>
        <source>Reading</source>
        <translation>阅读</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Translation</source>
        <translation>翻译</translation>
    </message>
    <message>
        <source>Romanization</source>
        <translation>罗马音</translation>
    </message>
    <message>
        <source>Original</source>
        <translation>原文</translation>
    </message>
    <message>
        <source>Simplified</source>
        <translation>简体</translation>
    </message>
    <message>
        <source>Traditional</source>
        <translation>繁体</translation>
    </message>
    <message>
        <source>Under each line:</source>
        <translation>每行下方：</translation>
    </message>
    <message>
        <source>Chinese script:</source>
        <translation>中文字形：</translation>
    </message>
</context>
<context>
    <name>StatusMenu</name>
    <message>
        <source>Stream Mode</source>
        <translation>滚动模式</translation>
    </message>
    <message>
        <source>Line Mode</source>
        <translation>单行模式</translation>
    </message>
    <message>
        <source>Lyric Earlier</source>
        <translation>歌词提前</translation>
    </message>
    <message>
        <source>Lyric Later</source>
        <translation>歌词延后</translation>
    </message>
    <message>
        <source>Reset Offset</source>
        <translation>重置偏移</translation>
    </message>
    <message>
        <source>Search Lyrics...</source>
        <translation>搜索歌词...</translation>
    </message>
    <message>
        <source>Lyric Manager...</source>
        <translation>歌词管理器...</translation>
    </message>
    <message>
        <source>Preferences...</source>
        <translation>首选项...</translation>
    </message>
    <message>
        <source>About Versewick</source>
        <translation>关于 Versewick</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Edit Lyric...</source>
        <translation>编辑歌词...</translation>
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
<context>
    <name>TimeItOffer</name>
    <message>
        <source>Time it...</source>
        <translation>为它打点...</translation>
    </message>
    <message>
        <source>Time this lyric by tapping along in the lyric editor</source>
        <translation>在歌词编辑器中跟着音乐打点，为这份歌词加上时间</translation>
    </message>
</context>
</TS>
