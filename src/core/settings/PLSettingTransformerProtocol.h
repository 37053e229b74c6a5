#pragma once

#include <QVariant>
#include <QtPlugin>

// Turns a setting's value into the form kept in the store and back. A transformer class is a
// QObject with an invokable default constructor that implements this interface.
class PLSettingTransformerProtocol {
public:
    virtual ~PLSettingTransformerProtocol() = default;
    virtual QVariant transformedValue(const QVariant& value) const = 0;
    virtual QVariant reverseTransformedValue(const QVariant& value) const = 0;
};

#define PLSettingTransformerProtocol_iid "com.morvane.PLSettingTransformerProtocol"
Q_DECLARE_INTERFACE(PLSettingTransformerProtocol, PLSettingTransformerProtocol_iid)
