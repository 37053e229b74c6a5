#pragma once

#include <QString>

class PLSettingsStore;

// What the displays show beside a lyric's own text: a smaller line under each line, and the
// script Chinese lines are shown in. Display only: nothing stored is ever converted.
struct ReadingOptions {
    enum class Secondary { None, Translation, Romanization };
    enum class Script { Original, Simplified, Traditional };

    static constexpr char kSecondaryKey[] = "display/secondaryLine";
    static constexpr char kScriptKey[] = "display/script";

    Secondary secondary = Secondary::Translation;
    Script script = Script::Original;

    bool operator==(const ReadingOptions&) const = default;

    // The stored names: "none", "translation", "romanization"; "original", "simplified",
    // "traditional". An unknown or absent name reads as the default.
    static QString name(Secondary value);
    static QString name(Script value);
    static Secondary secondaryFromName(const QString& name);
    static Script scriptFromName(const QString& name);

    static ReadingOptions load(const PLSettingsStore& store);
    void save(PLSettingsStore& store) const;
};
