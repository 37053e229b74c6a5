#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

#include <exception>
#include <memory>

class PLSettingTransformerProtocol;

enum class PLSettingType : int { Int = 0, Float = 1, Bool = 2, Object = 3 };

// Raised when a transformer class does not implement PLSettingTransformerProtocol.
class PLSettingsException : public std::exception {
public:
    explicit PLSettingsException(QString name)
        : m_name(std::move(name))
        , m_utf8(m_name.toUtf8())
    {
    }
    const QString& name() const { return m_name; }
    const char* what() const noexcept override { return m_utf8.constData(); }

private:
    QString m_name;
    QByteArray m_utf8;
};

// One registered setting: its accessor names, its store key and how its value is stored.
class PLSettingProperty {
public:
    static PLSettingProperty propertyByName(const QString& name, const QString& key,
                                            PLSettingType type, bool archive2Data);
    // Throws PLSettingsException when the class does not conform to the protocol.
    static PLSettingProperty propertyByName(const QString& name, const QString& key,
                                            const QMetaObject& transformClass);

    // "lyricFont" -> "setLyricFont:"; only the first character changes case.
    static QString setterNameSEL(const QString& name);
    // Call shapes for dynamic dispatch, with one more argument slot for the accessor name.
    QString signatureForGetter() const;
    QString signatureForSetter() const;

    QVariant transformedValue(const QVariant& value) const;
    QVariant reverseTransformedValue(const QVariant& value) const;

    QString getter;
    QString setter;
    QString key;
    bool archiveToData = false;
    bool isNeedTransform = false;
    std::shared_ptr<QObject> transformer; // the transformer class's instance
    PLSettingType type = PLSettingType::Int;

private:
    const PLSettingTransformerProtocol* protocol() const;
};
