// The translation service's JSON answers.
#include "core/text/PLTranslator.h"

#include <QString>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString body = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    (void)PLTranslator::TranslationFromResponse(body);
    (void)PLTranslator::TranslatedTextFromResponse(body);
    return 0;
}
