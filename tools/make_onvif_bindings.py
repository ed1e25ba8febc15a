#!/usr/bin/env python3
"""Writes the gSOAP interface header of the ONVIF device front (onvif/onvif.h) and the bodies
of its operations that answer with an empty response (onvif/OnvifEmptyOperations.cpp).

The published ONVIF WSDLs are not at hand when the program is built, so the interface is
declared here in gSOAP's header form: the services the device front dispatches (device, events,
media, display), the two it declares without serving (imaging, PTZ), and the schema types that
the answers with content need. soapcpp2 makes the bindings from the header at build time.
Run from the repository root after changing the lists: python3 tools/make_onvif_bindings.py
"""

# Operations of each service that answer SOAP_OK with an empty response element.
EMPTY = {
    "tds": """
    GetServices GetServiceCapabilities SetSystemDateAndTime
    SetSystemFactoryDefault UpgradeSystemFirmware SystemReboot RestoreSystem GetSystemBackup
    GetSystemLog GetSystemSupportInformation SetScopes AddScopes RemoveScopes
    GetDiscoveryMode SetDiscoveryMode GetRemoteDiscoveryMode SetRemoteDiscoveryMode
    GetDPAddresses GetEndpointReference GetRemoteUser SetRemoteUser GetUsers CreateUsers
    DeleteUsers SetUser GetWsdlUrl SetDPAddresses GetHostname SetHostname
    SetHostnameFromDHCP GetDNS SetDNS GetNTP SetNTP GetDynamicDNS SetDynamicDNS
    GetNetworkInterfaces SetNetworkInterfaces GetNetworkProtocols SetNetworkProtocols
    GetNetworkDefaultGateway SetNetworkDefaultGateway GetZeroConfiguration
    SetZeroConfiguration GetIPAddressFilter SetIPAddressFilter AddIPAddressFilter
    RemoveIPAddressFilter GetAccessPolicy SetAccessPolicy CreateCertificate GetCertificates
    GetCertificatesStatus SetCertificatesStatus DeleteCertificates GetPkcs10Request
    LoadCertificates GetClientCertificateMode SetClientCertificateMode GetRelayOutputs
    SetRelayOutputSettings SetRelayOutputState SendAuxiliaryCommand GetCACertificates
    LoadCertificateWithPrivateKey GetCertificateInformation LoadCACertificates
    CreateDot1XConfiguration SetDot1XConfiguration GetDot1XConfiguration
    GetDot1XConfigurations DeleteDot1XConfiguration GetDot11Capabilities GetDot11Status
    ScanAvailableDot11Networks GetSystemUris StartFirmwareUpgrade StartSystemRestore
    """.split(),
    "trt": """
    GetServiceCapabilities GetAudioSources GetAudioOutputs CreateProfile
    AddVideoEncoderConfiguration AddVideoSourceConfiguration AddAudioEncoderConfiguration
    AddAudioSourceConfiguration AddPTZConfiguration AddVideoAnalyticsConfiguration
    AddMetadataConfiguration AddAudioOutputConfiguration AddAudioDecoderConfiguration
    RemoveVideoEncoderConfiguration RemoveVideoSourceConfiguration
    RemoveAudioEncoderConfiguration RemoveAudioSourceConfiguration RemovePTZConfiguration
    RemoveVideoAnalyticsConfiguration RemoveMetadataConfiguration
    RemoveAudioOutputConfiguration RemoveAudioDecoderConfiguration DeleteProfile
    GetVideoSourceConfigurations GetVideoEncoderConfigurations GetAudioSourceConfigurations
    GetAudioEncoderConfigurations GetVideoAnalyticsConfigurations GetMetadataConfigurations
    GetAudioOutputConfigurations GetAudioDecoderConfigurations GetVideoSourceConfiguration
    GetVideoEncoderConfiguration GetAudioSourceConfiguration GetAudioEncoderConfiguration
    GetVideoAnalyticsConfiguration GetMetadataConfiguration GetAudioOutputConfiguration
    GetAudioDecoderConfiguration GetCompatibleVideoEncoderConfigurations
    GetCompatibleVideoSourceConfigurations GetCompatibleAudioEncoderConfigurations
    GetCompatibleAudioSourceConfigurations GetCompatibleVideoAnalyticsConfigurations
    GetCompatibleMetadataConfigurations GetCompatibleAudioOutputConfigurations
    GetCompatibleAudioDecoderConfigurations SetVideoSourceConfiguration
    SetVideoEncoderConfiguration SetAudioSourceConfiguration SetAudioEncoderConfiguration
    SetVideoAnalyticsConfiguration SetMetadataConfiguration SetAudioOutputConfiguration
    SetAudioDecoderConfiguration GetVideoSourceConfigurationOptions
    GetVideoEncoderConfigurationOptions GetAudioSourceConfigurationOptions
    GetAudioEncoderConfigurationOptions GetMetadataConfigurationOptions
    GetAudioOutputConfigurationOptions GetAudioDecoderConfigurationOptions
    GetGuaranteedNumberOfVideoEncoderInstances StartMulticastStreaming
    StopMulticastStreaming SetSynchronizationPoint
    """.split(),
    "tev": "GetServiceCapabilities CreatePullPointSubscription GetEventProperties".split(),
    "tls": """
    GetServiceCapabilities GetLayout SetLayout GetDisplayOptions GetPaneConfigurations
    GetPaneConfiguration SetPaneConfigurations SetPaneConfiguration CreatePaneConfiguration
    DeletePaneConfiguration
    """.split(),
    "timg": """
    GetServiceCapabilities GetImagingSettings SetImagingSettings GetOptions Move Stop GetStatus
    GetMoveOptions
    """.split(),
    "tptz": """
    GetServiceCapabilities GetConfigurations GetPresets SetPreset RemovePreset GotoPreset
    GetStatus GetConfiguration GetNodes GetNode SetConfiguration GetConfigurationOptions
    GotoHomePosition SetHomePosition ContinuousMove RelativeMove SendAuxiliaryCommand
    AbsoluteMove Stop GetPresetTours GetPresetTour GetPresetTourOptions CreatePresetTour
    ModifyPresetTour OperatePresetTour RemovePresetTour
    """.split(),
}

# Operations with content: their response types are written out in TYPES below.
CONTENT = {
    "tds": ["GetDeviceInformation", "GetScopes", "GetCapabilities", "GetSystemDateAndTime"],
    "trt": ["GetVideoSources", "GetProfile", "GetProfiles", "GetStreamUri", "GetSnapshotUri"],
}

SERVICES = [  # prefix, service name (the generated class is <name>Service), namespace, served
    ("tds", "Device", "http://www.onvif.org/ver10/device/wsdl", True),
    ("tev", "Event", "http://www.onvif.org/ver10/events/wsdl", True),
    ("trt", "Media", "http://www.onvif.org/ver10/media/wsdl", True),
    ("tls", "Display", "http://www.onvif.org/ver10/display/wsdl", True),
    ("timg", "Imaging", "http://www.onvif.org/ver20/imaging/wsdl", False),
    ("tptz", "PTZ", "http://www.onvif.org/ver20/ptz/wsdl", False),
]

# Schema namespaces of the table, in order, besides the services' own.
SCHEMAS = [
    ("wsa5", "http://www.w3.org/2005/08/addressing"),
    ("xmime", "http://tempuri.org/xmime.xsd"),
    ("xop", "http://www.w3.org/2004/08/xop/include"),
    ("tt", "http://www.onvif.org/ver10/schema"),
    ("wsrfbf", "http://docs.oasis-open.org/wsrf/bf-2"),
    ("wstop", "http://docs.oasis-open.org/wsn/t-1"),
    ("wsrfr", "http://docs.oasis-open.org/wsrf/r-2"),
    ("ns2", "http://www.onvif.org/ver10/events/wsdl/PullPointSubscriptionBinding"),
    ("ns3", "http://www.onvif.org/ver10/events/wsdl/EventBinding"),
    ("ns4", "http://www.onvif.org/ver10/events/wsdl/SubscriptionManagerBinding"),
    ("ns5", "http://www.onvif.org/ver10/events/wsdl/NotificationProducerBinding"),
    ("ns6", "http://www.onvif.org/ver10/events/wsdl/NotificationConsumerBinding"),
    ("ns7", "http://www.onvif.org/ver10/events/wsdl/PullPointBinding"),
    ("ns8", "http://www.onvif.org/ver10/events/wsdl/CreatePullPointBinding"),
    ("ns9", "http://www.onvif.org/ver10/events/wsdl/PausableSubscriptionManagerBinding"),
    ("wsnt", "http://docs.oasis-open.org/wsn/b-2"),
    # Namespaces that mainstream clients declare in their requests and headers.
    ("wsse", "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd"),
    ("wsu", "http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd"),
    ("wsa", "http://schemas.xmlsoap.org/ws/2004/08/addressing"),
    ("wsdd", "http://schemas.xmlsoap.org/ws/2005/04/discovery"),
    ("dn", "http://www.onvif.org/ver10/network/wsdl"),
    ("tr2", "http://www.onvif.org/ver20/media/wsdl"),
    ("tan", "http://www.onvif.org/ver20/analytics/wsdl"),
    ("tad", "http://www.onvif.org/ver10/analyticsdevice/wsdl"),
    ("tmd", "http://www.onvif.org/ver10/deviceIO/wsdl"),
    ("trc", "http://www.onvif.org/ver10/recording/wsdl"),
    ("tse", "http://www.onvif.org/ver10/search/wsdl"),
    ("trp", "http://www.onvif.org/ver10/replay/wsdl"),
    ("trv", "http://www.onvif.org/ver10/receiver/wsdl"),
    ("ter", "http://www.onvif.org/ver10/error"),
    ("tns1", "http://www.onvif.org/ver10/topics"),
    ("xmime5", "http://www.w3.org/2005/05/xmlmime"),
    ("ds", "http://www.w3.org/2000/09/xmldsig#"),
    ("xenc", "http://www.w3.org/2001/04/xmlenc#"),
]

# The SOAP headers clients send. The device has no authentication: a WS-Security token is read
# and ignored; WS-Addressing is understood, and the answer carries RelatesTo.
HEADERS = """
class wsa5__EndpointReferenceType { xsd__anyURI Address 0; _XML __any; };
class _wsse__Security { _XML __any; };
struct SOAP_ENV__Header {
    std::string* wsa5__MessageID 0;
    std::string* wsa5__RelatesTo 0;
    wsa5__EndpointReferenceType* wsa5__From 0;
    wsa5__EndpointReferenceType* wsa5__ReplyTo 0;
    wsa5__EndpointReferenceType* wsa5__FaultTo 0;
    std::string* wsa5__To 0;
    std::string* wsa5__Action 0;
    _wsse__Security* wsse__Security 0;
};
"""

TYPES = """
typedef std::string xsd__anyURI;
typedef std::string xsd__duration;  // written as given, such as PT0H0M1S

enum tt__ScopeDefinition { tt__ScopeDefinition__Fixed, tt__ScopeDefinition__Configurable };
enum tt__VideoEncoding { tt__VideoEncoding__JPEG, tt__VideoEncoding__MPEG4,
                         tt__VideoEncoding__H264 };
enum tt__H264Profile { tt__H264Profile__Baseline, tt__H264Profile__Main,
                       tt__H264Profile__Extended, tt__H264Profile__High };
enum tt__IPType { tt__IPType__IPv4, tt__IPType__IPv6 };

class tt__Scope { enum tt__ScopeDefinition ScopeDef 1; xsd__anyURI ScopeItem 1; };
class tt__OnvifVersion { int Major 1; int Minor 1; };
class tt__NetworkCapabilities { bool* IPFilter 0; bool* ZeroConfiguration 0;
                                bool* IPVersion6 0; bool* DynDNS 0; };
class tt__SystemCapabilities { bool DiscoveryResolve 1; bool DiscoveryBye 1;
                               bool RemoteDiscovery 1; bool SystemBackup 1; bool SystemLogging 1;
                               bool FirmwareUpgrade 1;
                               std::vector<tt__OnvifVersion*> SupportedVersions 1; };
class tt__DeviceCapabilities { xsd__anyURI XAddr 1; tt__NetworkCapabilities* Network 0;
                               tt__SystemCapabilities* System 0; };
class tt__EventCapabilities { xsd__anyURI XAddr 1; bool WSSubscriptionPolicySupport 1;
                              bool WSPullPointSupport 1;
                              bool WSPausableSubscriptionManagerInterfaceSupport 1; };
class tt__ImagingCapabilities { xsd__anyURI XAddr 1; };
class tt__RealTimeStreamingCapabilities { bool* RTPMulticast 0; bool* RTP_USCORETCP 0;
                                          bool* RTP_USCORERTSP_USCORETCP 0; };
class tt__MediaCapabilities { xsd__anyURI XAddr 1;
                              tt__RealTimeStreamingCapabilities* StreamingCapabilities 1; };
class tt__PTZCapabilities { xsd__anyURI XAddr 1; };
class tt__Capabilities { tt__DeviceCapabilities* Device 0; tt__EventCapabilities* Events 0;
                         tt__ImagingCapabilities* Imaging 0; tt__MediaCapabilities* Media 0;
                         tt__PTZCapabilities* PTZ 0; };
enum tt__SetDateTimeType { tt__SetDateTimeType__Manual, tt__SetDateTimeType__NTP };
class tt__TimeZone { std::string TZ 1; };
class tt__Time { int Hour 1; int Minute 1; int Second 1; };
class tt__Date { int Year 1; int Month 1; int Day 1; };
class tt__DateTime { tt__Time* Time 1; tt__Date* Date 1; };
class tt__SystemDateTime { enum tt__SetDateTimeType DateTimeType 1; bool DaylightSavings 1;
                           tt__TimeZone* TimeZone 0; tt__DateTime* UTCDateTime 0;
                           tt__DateTime* LocalDateTime 0; };

class tt__VideoResolution { int Width 1; int Height 1; };
class tt__IntRectangle { @int x 1; @int y 1; @int width 1; @int height 1; };
class tt__VideoSource { @std::string token 1; float Framerate 1;
                        tt__VideoResolution* Resolution 1; };
class tt__VideoSourceConfiguration { @std::string token 1; std::string Name 1; int UseCount 1;
                                     std::string SourceToken 1; tt__IntRectangle* Bounds 1; };
class tt__VideoRateControl { int FrameRateLimit 1; int EncodingInterval 1; int BitrateLimit 1; };
class tt__H264Configuration { int GovLength 1; enum tt__H264Profile H264Profile 1; };
class tt__IPAddress { enum tt__IPType Type 1; std::string* IPv4Address 0; };
class tt__MulticastConfiguration { tt__IPAddress* Address 1; int Port 1; int TTL 1;
                                   bool AutoStart 1; };
class tt__VideoEncoderConfiguration { @std::string token 1; std::string Name 1; int UseCount 1;
                                      enum tt__VideoEncoding Encoding 1;
                                      tt__VideoResolution* Resolution 1; float Quality 1;
                                      tt__VideoRateControl* RateControl 0;
                                      tt__H264Configuration* H264 0;
                                      tt__MulticastConfiguration* Multicast 1;
                                      xsd__duration SessionTimeout 1; };
class tt__Profile { @std::string token 1; std::string Name 1;
                    tt__VideoSourceConfiguration* VideoSourceConfiguration 0;
                    tt__VideoEncoderConfiguration* VideoEncoderConfiguration 0; };
class tt__MediaUri { xsd__anyURI Uri 1; bool InvalidAfterConnect 1; bool InvalidAfterReboot 1;
                     xsd__duration Timeout 1; };

class _tds__GetSystemDateAndTime { };
class _tds__GetSystemDateAndTimeResponse { tt__SystemDateTime* SystemDateAndTime 1; };
class _tds__GetDeviceInformation { };
class _tds__GetDeviceInformationResponse { std::string Manufacturer 1; std::string Model 1;
                                           std::string FirmwareVersion 1;
                                           std::string SerialNumber 1;
                                           std::string HardwareId 1; };
class _tds__GetScopes { };
class _tds__GetScopesResponse { std::vector<tt__Scope*> Scopes 1; };
class _tds__GetCapabilities { std::vector<std::string> Category 0; };
class _tds__GetCapabilitiesResponse { tt__Capabilities* Capabilities 1; };
class _trt__GetVideoSources { };
class _trt__GetVideoSourcesResponse { std::vector<tt__VideoSource*> VideoSources 0; };
class _trt__GetProfile { std::string ProfileToken 0; };
class _trt__GetProfileResponse { tt__Profile* Profile 1; };
class _trt__GetProfiles { };
class _trt__GetProfilesResponse { std::vector<tt__Profile*> Profiles 0; };
class _trt__GetStreamUri { std::string ProfileToken 0; };
class _trt__GetStreamUriResponse { tt__MediaUri* MediaUri 1; };
class _trt__GetSnapshotUri { std::string ProfileToken 0; };
class _trt__GetSnapshotUriResponse { tt__MediaUri* MediaUri 1; };
"""

# Empty responses whose element nevertheless has a required child, written nil.
REQUIRED_NIL = {}


def header():
    lines = ["// clang-format off",
             "// gSOAP reads the //gsoap lines and the member annotations as written: not reformatted.",
             "// The ONVIF device front's interface in gSOAP's header form. Written by",
             "// tools/make_onvif_bindings.py; soapcpp2 makes the bindings from it.", ""]
    for prefix, name, namespace, _ in SERVICES:
        lines += [f"//gsoap {prefix} service name: {name}",
                  f"//gsoap {prefix} service style: document",
                  f"//gsoap {prefix} service encoding: literal",
                  f"//gsoap {prefix} service namespace: {namespace}",
                  f"//gsoap {prefix} schema namespace: {namespace}",
                  f"//gsoap {prefix} schema elementForm: qualified", ""]
    for prefix, namespace in SCHEMAS:
        lines += [f"//gsoap {prefix} schema namespace: {namespace}",
                  f"//gsoap {prefix} schema elementForm: qualified"]
    lines += ["", "#import \"stlvector.h\"", TYPES, HEADERS]
    for prefix, _, _, _ in SERVICES:
        for op in EMPTY[prefix]:
            nil = REQUIRED_NIL.get((prefix, op), "")
            lines += [f"class _{prefix}__{op} {{ }};",
                      f"class _{prefix}__{op}Response {{ {nil} }};"]
    lines.append("")
    for prefix, _, _, _ in SERVICES:
        for op in EMPTY[prefix] + CONTENT.get(prefix, []):
            lines.append(f"int __{prefix}__{op}(_{prefix}__{op}* {prefix}__{op}, "
                         f"_{prefix}__{op}Response& {prefix}__{op}Response);")
    return "\n".join(lines) + "\n"


def empty_operations():
    lines = ["// clang-format off",
             "// Generated: not reformatted.",
             "// The operations of the served services that answer SOAP_OK with an empty response",
             "// element. Written by tools/make_onvif_bindings.py.",
             "#include \"soapDeviceService.h\"",
             "#include \"soapDisplayService.h\"",
             "#include \"soapEventService.h\"",
             "#include \"soapMediaService.h\"", ""]
    for prefix, name, _, served in SERVICES:
        if not served:
            continue
        for op in EMPTY[prefix]:
            lines += [f"int {name}Service::{op}(_{prefix}__{op}*, _{prefix}__{op}Response&) {{",
                      "    return SOAP_OK;", "}", ""]
    return "\n".join(lines)


if __name__ == "__main__":
    with open("onvif/onvif.h", "w") as out:
        out.write(header())
    with open("onvif/OnvifEmptyOperations.cpp", "w") as out:
        out.write(empty_operations())
