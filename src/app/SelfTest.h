#pragma once

// `versewick --self-test`: loads the built-in lyric plug-in and the Simplified Chinese
// translation the way a normal start does, prints what it found, and answers 0 only when both
// were found. It needs no display and no bus, so a package check can run it anywhere.
int runSelfTest(int argc, char** argv);
