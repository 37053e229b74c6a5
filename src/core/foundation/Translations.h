#pragma once

#include <QLocale>
#include <QStringList>

class QCoreApplication;

// Loads the application's translation (versewick_<locale>.qm) and Qt's own one (qtbase, for the
// standard dialog buttons) into an application. English is the source language: for a locale
// with no translation the texts stay the English keys. Only the desktop executable calls this;
// the command-line tools keep their output in English for the scripts that read it.
namespace foundation {

// Where versewick_<locale>.qm is looked for, in order: the installed layout
// (<bin>/../share/versewick/translations), then the build tree's (<build>/translations).
QStringList translationFolders();

// Replaces the translators an earlier call installed (so the language can change while running).
// True when the application's own translation for the locale was found and installed; Qt's is
// installed too whenever present, whatever the answer.
bool installTranslations(QCoreApplication& app, const QLocale& locale);

} // namespace foundation
