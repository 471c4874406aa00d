#include "model/DeviceAppBinding.h"
#include "model/RuleJson.h"
#include "model/WiFiAppBinding.h"

#include <cstddef>
#include <cstdint>

// Whatever the bytes, decoding ends in a list or none, and a decoded list encodes and decodes
// back to the same number of rules.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    if (const auto rules = RuleJson::decodeList<DeviceAppBinding>(bytes)) {
        if (const auto encoded = RuleJson::encodeList(*rules, QJsonDocument::Compact)) {
            if (RuleJson::decodeList<DeviceAppBinding>(*encoded)->size() != rules->size())
                __builtin_trap();
        }
    }
    if (const auto rules = RuleJson::decodeList<WiFiAppBinding>(bytes)) {
        if (const auto encoded = RuleJson::encodeList(*rules, QJsonDocument::Compact)) {
            if (RuleJson::decodeList<WiFiAppBinding>(*encoded)->size() != rules->size())
                __builtin_trap();
        }
    }
    return 0;
}
