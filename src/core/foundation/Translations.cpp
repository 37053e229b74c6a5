#include "core/foundation/Translations.h"

#include "core/foundation/AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>

namespace foundation {

namespace {

// Marks the translators this module installs, so a second call can find and replace them.
constexpr char kTranslatorName[] = "versewick-translator";

void removeInstalled(QCoreApplication& app)
{
    const auto translators =
        app.findChildren<QTranslator*>(QLatin1String(kTranslatorName), Qt::FindDirectChildrenOnly);
    for (QTranslator* translator : translators) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
}

// The application owns the translator (Qt parent); false, and nothing installed, when absent.
bool installFrom(QCoreApplication& app, const QLocale& locale, const QString& name,
                 const QStringList& folders)
{
    for (const QString& folder : folders) {
        auto* translator = new QTranslator(&app);
        translator->setObjectName(QLatin1String(kTranslatorName));
        if (translator->load(locale, name, QStringLiteral("_"), folder) &&
            QCoreApplication::installTranslator(translator))
            return true;
        delete translator;
    }
    return false;
}

} // namespace

QStringList translationFolders()
{
    return {resourcePath(QStringLiteral("translations")),
            QDir::cleanPath(QCoreApplication::applicationDirPath() +
                            QStringLiteral("/../translations"))};
}

bool installTranslations(QCoreApplication& app, const QLocale& locale)
{
    removeInstalled(app);
    installFrom(app, locale, QStringLiteral("qtbase"),
                {QLibraryInfo::path(QLibraryInfo::TranslationsPath)});
    return installFrom(app, locale, QStringLiteral("versewick"), translationFolders());
}

} // namespace foundation
