// The device management operations with content: identity, scopes and capabilities of the
// stream's device. Every value is a constant or comes from the stream's device data.
#include <ctime>
#include <string>

#include "OnvifDeviceData.h"
#include "soapDeviceService.h"

namespace {

const OnvifDeviceData& DataOf(struct soap* context) {
    return *static_cast<const OnvifDeviceData*>(context->user);
}

bool* Flag(struct soap* context, bool value) {
    bool* flag = soap_new_bool(context);
    *flag = value;
    return flag;
}

tt__Scope* FixedScope(struct soap* context, const std::string& path) {
    tt__Scope* scope = soap_new_tt__Scope(context);
    scope->ScopeDef = tt__ScopeDefinition__Fixed;
    scope->ScopeItem = "onvif://www.onvif.org/" + path;
    return scope;
}

tt__DeviceCapabilities* DeviceCapabilities(struct soap* context, const std::string& url) {
    auto* device = soap_new_tt__DeviceCapabilities(context);
    device->XAddr = url;
    device->Network = soap_new_tt__NetworkCapabilities(context);
    device->Network->IPFilter = Flag(context, true);
    device->Network->ZeroConfiguration = Flag(context, false);
    device->Network->IPVersion6 = Flag(context, false);
    device->Network->DynDNS = Flag(context, false);
    device->System = soap_new_tt__SystemCapabilities(context);
    device->System->DiscoveryResolve = true;
    device->System->DiscoveryBye = false;
    device->System->RemoteDiscovery = true;
    device->System->SystemBackup = false;
    device->System->SystemLogging = false;
    device->System->FirmwareUpgrade = false;
    auto* version = soap_new_tt__OnvifVersion(context);
    version->Major = 1;
    version->Minor = 0;
    device->System->SupportedVersions.push_back(version);
    return device;
}

// The local zone as a POSIX TZ text, as the schema asks: its name and the hours west of UTC
// ("UTC0", "CET-1"); daylight-saving rules are not known here and are left out.
std::string PosixZone(const std::tm& local) {
    const long west = -local.tm_gmtoff;
    std::string zone = local.tm_zone != nullptr ? local.tm_zone : "UTC";
    zone += std::to_string(west / 3600);
    if (west % 3600 != 0) {
        const long minutes = (west < 0 ? -west : west) % 3600 / 60;
        zone += (minutes < 10 ? ":0" : ":") + std::to_string(minutes);
    }
    return zone;
}

// A date and time in the answer's memory, from broken-down time.
tt__DateTime* DateTimeOf(struct soap* context, const std::tm& when) {
    auto* value = soap_new_tt__DateTime(context);
    value->Time = soap_new_tt__Time(context);
    value->Time->Hour = when.tm_hour;
    value->Time->Minute = when.tm_min;
    value->Time->Second = when.tm_sec;
    value->Date = soap_new_tt__Date(context);
    value->Date->Year = when.tm_year + 1900;
    value->Date->Month = when.tm_mon + 1;
    value->Date->Day = when.tm_mday;
    return value;
}

}  // namespace

int DeviceService::GetDeviceInformation(_tds__GetDeviceInformation*,
                                        _tds__GetDeviceInformationResponse& response) {
    response.Manufacturer = "Halvern";
    response.Model = DataOf(soap).name;
    response.FirmwareVersion = "1.1";
    response.SerialNumber = "12345678";
    response.HardwareId = "123456";
    return SOAP_OK;
}

// The machine's clock, in UTC and local time: clients need it, for one to make the time stamps
// of WS-Security digests. The clock is the machine's own: set by hand or by its NTP service,
// which the device cannot tell apart, so it says Manual.
int DeviceService::GetSystemDateAndTime(_tds__GetSystemDateAndTime*,
                                        _tds__GetSystemDateAndTimeResponse& response) {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    std::tm local{};
    ::gmtime_r(&now, &utc);
    ::localtime_r(&now, &local);
    auto* clock = soap_new_tt__SystemDateTime(soap);
    clock->DateTimeType = tt__SetDateTimeType__Manual;
    clock->DaylightSavings = local.tm_isdst > 0;
    clock->TimeZone = soap_new_tt__TimeZone(soap);
    clock->TimeZone->TZ = PosixZone(local);
    clock->UTCDateTime = DateTimeOf(soap, utc);
    clock->LocalDateTime = DateTimeOf(soap, local);
    response.SystemDateAndTime = clock;
    return SOAP_OK;
}

int DeviceService::GetScopes(_tds__GetScopes*, _tds__GetScopesResponse& response) {
    response.Scopes.push_back(FixedScope(soap, "type/video_encoder"));
    response.Scopes.push_back(FixedScope(soap, "location/building/headquarter"));
    response.Scopes.push_back(FixedScope(soap, "name/" + DataOf(soap).name));
    return SOAP_OK;
}

int DeviceService::GetCapabilities(_tds__GetCapabilities*,
                                   _tds__GetCapabilitiesResponse& response) {
    const std::string url = DataOf(soap).ServiceUrl();
    auto* capabilities = soap_new_tt__Capabilities(soap);
    capabilities->Device = DeviceCapabilities(soap, url);
    capabilities->Events = soap_new_tt__EventCapabilities(soap);
    capabilities->Events->XAddr = url;
    capabilities->Events->WSSubscriptionPolicySupport = false;
    capabilities->Events->WSPullPointSupport = false;
    capabilities->Events->WSPausableSubscriptionManagerInterfaceSupport = false;
    capabilities->Imaging = soap_new_tt__ImagingCapabilities(soap);
    capabilities->Imaging->XAddr = url;
    capabilities->Media = soap_new_tt__MediaCapabilities(soap);
    capabilities->Media->XAddr = url;
    capabilities->Media->StreamingCapabilities = soap_new_tt__RealTimeStreamingCapabilities(soap);
    capabilities->Media->StreamingCapabilities->RTPMulticast = Flag(soap, true);
    capabilities->Media->StreamingCapabilities->RTP_USCORETCP = Flag(soap, true);
    capabilities->Media->StreamingCapabilities->RTP_USCORERTSP_USCORETCP = Flag(soap, false);
    capabilities->PTZ = soap_new_tt__PTZCapabilities(soap);
    capabilities->PTZ->XAddr = url;
    response.Capabilities = capabilities;
    return SOAP_OK;
}
