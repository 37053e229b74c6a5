#include "SampleLyric.h"

QString sampleLyric()
{
    return QStringLiteral(
        "[ti:Lanterns on the River]\n"
        "[ar:The Quiet Ferries]\n"
        "[00:01.00]Lanterns on the river, drifting slow\n"
        "[00:04.50]Every light a letter that we never sent\n"
        "[00:08.20]河边的灯笼慢慢漂\n"
        "[00:11.80]每一盏都是没寄出的信\n"
        "[00:15.40]\n"
        "[00:17.00]And if the morning finds us standing where the water meets the stone, "
        "we will tell it every secret that the night has ever known\n"
        "[00:23.50]夜色温柔 Night is gentle\n"
        "[00:27.00]川の流れに 灯りをともして\n"
        "[00:30.60]Hold the oar and let the current choose\n"
        "[00:34.20]Nothing left to carry, nothing left to lose\n"
        "[00:38.00]\n"
        "[00:39.50]让风把我们带回家\n"
        "[00:43.10]Carry us home, carry us home\n"
        "[00:47.00]Lanterns on the river\n");
}

QString generatedLyric(int lines, double gap)
{
    QString text;
    for (int i = 0; i < lines; ++i) {
        const int centiseconds = int(i * gap * 100);
        text += QString::asprintf("[%02d:%02d.%02d]", centiseconds / 6000, centiseconds / 100 % 60,
                                  centiseconds % 100) +
                QStringLiteral("Line %1 of a long song, with a few more words\n").arg(i);
    }
    return text;
}
