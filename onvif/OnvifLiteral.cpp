#include "OnvifLiteral.h"

#include <ctime>
#include <string>
#include <utility>

#include "OnvifDeviceData.h"
#include "soapH.h"

namespace {

std::string UtcNow() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

void ReplaceAll(std::string& text, const std::string& field, const std::string& value) {
    for (size_t at = text.find(field); at != std::string::npos;
         at = text.find(field, at + value.size()))
        text.replace(at, field.size(), value);
}

}  // namespace

char* OnvifLiteral(struct soap* context, const char* text) {
    const auto& data = *static_cast<const OnvifDeviceData*>(context->user);
    std::string filled = text;
    const std::pair<const char*, std::string> fields[] = {
        {"{XADDR}", data.ServiceUrl()},
        {"{NOW}", UtcNow()},
        {"{WIDTH}", std::to_string(data.width)},
        {"{HEIGHT}", std::to_string(data.height)},
    };
    for (const auto& [field, value] : fields)
        ReplaceAll(filled, field, value);
    return soap_strdup(context, filled.c_str());
}
