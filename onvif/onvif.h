// clang-format off
// gSOAP reads the //gsoap lines and the member annotations as written: not reformatted.
// The ONVIF device front's interface in gSOAP's header form. Written by
// tools/make_onvif_bindings.py; soapcpp2 makes the bindings from it.

//gsoap tds service name: Device
//gsoap tds service style: document
//gsoap tds service encoding: literal
//gsoap tds service namespace: http://www.onvif.org/ver10/device/wsdl
//gsoap tds schema namespace: http://www.onvif.org/ver10/device/wsdl
//gsoap tds schema elementForm: qualified

//gsoap tev service name: Event
//gsoap tev service style: document
//gsoap tev service encoding: literal
//gsoap tev service namespace: http://www.onvif.org/ver10/events/wsdl
//gsoap tev schema namespace: http://www.onvif.org/ver10/events/wsdl
//gsoap tev schema elementForm: qualified

//gsoap trt service name: Media
//gsoap trt service style: document
//gsoap trt service encoding: literal
//gsoap trt service namespace: http://www.onvif.org/ver10/media/wsdl
//gsoap trt schema namespace: http://www.onvif.org/ver10/media/wsdl
//gsoap trt schema elementForm: qualified

//gsoap tls service name: Display
//gsoap tls service style: document
//gsoap tls service encoding: literal
//gsoap tls service namespace: http://www.onvif.org/ver10/display/wsdl
//gsoap tls schema namespace: http://www.onvif.org/ver10/display/wsdl
//gsoap tls schema elementForm: qualified

//gsoap timg service name: Imaging
//gsoap timg service style: document
//gsoap timg service encoding: literal
//gsoap timg service namespace: http://www.onvif.org/ver20/imaging/wsdl
//gsoap timg schema namespace: http://www.onvif.org/ver20/imaging/wsdl
//gsoap timg schema elementForm: qualified

//gsoap tptz service name: PTZ
//gsoap tptz service style: document
//gsoap tptz service encoding: literal
//gsoap tptz service namespace: http://www.onvif.org/ver20/ptz/wsdl
//gsoap tptz schema namespace: http://www.onvif.org/ver20/ptz/wsdl
//gsoap tptz schema elementForm: qualified

//gsoap wsa5 schema namespace: http://www.w3.org/2005/08/addressing
//gsoap wsa5 schema elementForm: qualified
//gsoap xmime schema namespace: http://www.w3.org/2004/11/xmlmime
//gsoap xmime schema elementForm: qualified
//gsoap xop schema namespace: http://www.w3.org/2004/08/xop/include
//gsoap xop schema elementForm: qualified
//gsoap tt schema namespace: http://www.onvif.org/ver10/schema
//gsoap tt schema elementForm: qualified
//gsoap wsrfbf schema namespace: http://docs.oasis-open.org/wsrf/bf-2
//gsoap wsrfbf schema elementForm: qualified
//gsoap wstop schema namespace: http://docs.oasis-open.org/wsn/t-1
//gsoap wstop schema elementForm: qualified
//gsoap wsrfr schema namespace: http://docs.oasis-open.org/wsrf/r-2
//gsoap wsrfr schema elementForm: qualified
//gsoap ns2 schema namespace: http://www.onvif.org/ver10/events/wsdl/PullPointSubscriptionBinding
//gsoap ns2 schema elementForm: qualified
//gsoap ns3 schema namespace: http://www.onvif.org/ver10/events/wsdl/EventBinding
//gsoap ns3 schema elementForm: qualified
//gsoap ns4 schema namespace: http://www.onvif.org/ver10/events/wsdl/SubscriptionManagerBinding
//gsoap ns4 schema elementForm: qualified
//gsoap ns5 schema namespace: http://www.onvif.org/ver10/events/wsdl/NotificationProducerBinding
//gsoap ns5 schema elementForm: qualified
//gsoap ns6 schema namespace: http://www.onvif.org/ver10/events/wsdl/NotificationConsumerBinding
//gsoap ns6 schema elementForm: qualified
//gsoap ns7 schema namespace: http://www.onvif.org/ver10/events/wsdl/PullPointBinding
//gsoap ns7 schema elementForm: qualified
//gsoap ns8 schema namespace: http://www.onvif.org/ver10/events/wsdl/CreatePullPointBinding
//gsoap ns8 schema elementForm: qualified
//gsoap ns9 schema namespace: http://www.onvif.org/ver10/events/wsdl/PausableSubscriptionManagerBinding
//gsoap ns9 schema elementForm: qualified
//gsoap wsnt schema namespace: http://docs.oasis-open.org/wsn/b-2
//gsoap wsnt schema elementForm: qualified
//gsoap wsse schema namespace: http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-secext-1.0.xsd
//gsoap wsse schema elementForm: qualified
//gsoap wsu schema namespace: http://docs.oasis-open.org/wss/2004/01/oasis-200401-wss-wssecurity-utility-1.0.xsd
//gsoap wsu schema elementForm: qualified
//gsoap wsa schema namespace: http://schemas.xmlsoap.org/ws/2004/08/addressing
//gsoap wsa schema elementForm: qualified
//gsoap wsdd schema namespace: http://schemas.xmlsoap.org/ws/2005/04/discovery
//gsoap wsdd schema elementForm: qualified
//gsoap dn schema namespace: http://www.onvif.org/ver10/network/wsdl
//gsoap dn schema elementForm: qualified
//gsoap tr2 schema namespace: http://www.onvif.org/ver20/media/wsdl
//gsoap tr2 schema elementForm: qualified
//gsoap tan schema namespace: http://www.onvif.org/ver20/analytics/wsdl
//gsoap tan schema elementForm: qualified
//gsoap tad schema namespace: http://www.onvif.org/ver10/analyticsdevice/wsdl
//gsoap tad schema elementForm: qualified
//gsoap tmd schema namespace: http://www.onvif.org/ver10/deviceIO/wsdl
//gsoap tmd schema elementForm: qualified
//gsoap trc schema namespace: http://www.onvif.org/ver10/recording/wsdl
//gsoap trc schema elementForm: qualified
//gsoap tse schema namespace: http://www.onvif.org/ver10/search/wsdl
//gsoap tse schema elementForm: qualified
//gsoap trp schema namespace: http://www.onvif.org/ver10/replay/wsdl
//gsoap trp schema elementForm: qualified
//gsoap trv schema namespace: http://www.onvif.org/ver10/receiver/wsdl
//gsoap trv schema elementForm: qualified
//gsoap ter schema namespace: http://www.onvif.org/ver10/error
//gsoap ter schema elementForm: qualified
//gsoap tns1 schema namespace: http://www.onvif.org/ver10/topics
//gsoap tns1 schema elementForm: qualified
//gsoap xmime5 schema namespace: http://www.w3.org/2005/05/xmlmime
//gsoap xmime5 schema elementForm: qualified
//gsoap ds schema namespace: http://www.w3.org/2000/09/xmldsig#
//gsoap ds schema elementForm: qualified
//gsoap xenc schema namespace: http://www.w3.org/2001/04/xmlenc#
//gsoap xenc schema elementForm: qualified

#import "stlvector.h"

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

class _tds__GetServices { };
class _tds__GetServicesResponse { _XML __any; };
class _tds__GetServiceCapabilities { };
class _tds__GetServiceCapabilitiesResponse { _XML __any; };
class _tds__SetSystemDateAndTime { };
class _tds__SetSystemDateAndTimeResponse { };
class _tds__SetSystemFactoryDefault { };
class _tds__SetSystemFactoryDefaultResponse { };
class _tds__UpgradeSystemFirmware { };
class _tds__UpgradeSystemFirmwareResponse { };
class _tds__SystemReboot { };
class _tds__SystemRebootResponse { _XML __any; };
class _tds__RestoreSystem { };
class _tds__RestoreSystemResponse { };
class _tds__GetSystemBackup { };
class _tds__GetSystemBackupResponse { };
class _tds__GetSystemLog { };
class _tds__GetSystemLogResponse { _XML __any; };
class _tds__GetSystemSupportInformation { };
class _tds__GetSystemSupportInformationResponse { _XML __any; };
class _tds__SetScopes { };
class _tds__SetScopesResponse { };
class _tds__AddScopes { };
class _tds__AddScopesResponse { };
class _tds__RemoveScopes { };
class _tds__RemoveScopesResponse { };
class _tds__GetDiscoveryMode { };
class _tds__GetDiscoveryModeResponse { _XML __any; };
class _tds__SetDiscoveryMode { };
class _tds__SetDiscoveryModeResponse { };
class _tds__GetRemoteDiscoveryMode { };
class _tds__GetRemoteDiscoveryModeResponse { _XML __any; };
class _tds__SetRemoteDiscoveryMode { };
class _tds__SetRemoteDiscoveryModeResponse { };
class _tds__GetDPAddresses { };
class _tds__GetDPAddressesResponse { };
class _tds__GetEndpointReference { };
class _tds__GetEndpointReferenceResponse { _XML __any; };
class _tds__GetRemoteUser { };
class _tds__GetRemoteUserResponse { };
class _tds__SetRemoteUser { };
class _tds__SetRemoteUserResponse { };
class _tds__GetUsers { };
class _tds__GetUsersResponse { };
class _tds__CreateUsers { };
class _tds__CreateUsersResponse { };
class _tds__DeleteUsers { };
class _tds__DeleteUsersResponse { };
class _tds__SetUser { };
class _tds__SetUserResponse { };
class _tds__GetWsdlUrl { };
class _tds__GetWsdlUrlResponse { _XML __any; };
class _tds__SetDPAddresses { };
class _tds__SetDPAddressesResponse { };
class _tds__GetHostname { };
class _tds__GetHostnameResponse { _XML __any; };
class _tds__SetHostname { };
class _tds__SetHostnameResponse { };
class _tds__SetHostnameFromDHCP { };
class _tds__SetHostnameFromDHCPResponse { _XML __any; };
class _tds__GetDNS { };
class _tds__GetDNSResponse { _XML __any; };
class _tds__SetDNS { };
class _tds__SetDNSResponse { };
class _tds__GetNTP { };
class _tds__GetNTPResponse { _XML __any; };
class _tds__SetNTP { };
class _tds__SetNTPResponse { };
class _tds__GetDynamicDNS { };
class _tds__GetDynamicDNSResponse { _XML __any; };
class _tds__SetDynamicDNS { };
class _tds__SetDynamicDNSResponse { };
class _tds__GetNetworkInterfaces { };
class _tds__GetNetworkInterfacesResponse { _XML __any; };
class _tds__SetNetworkInterfaces { };
class _tds__SetNetworkInterfacesResponse { _XML __any; };
class _tds__GetNetworkProtocols { };
class _tds__GetNetworkProtocolsResponse { };
class _tds__SetNetworkProtocols { };
class _tds__SetNetworkProtocolsResponse { };
class _tds__GetNetworkDefaultGateway { };
class _tds__GetNetworkDefaultGatewayResponse { _XML __any; };
class _tds__SetNetworkDefaultGateway { };
class _tds__SetNetworkDefaultGatewayResponse { };
class _tds__GetZeroConfiguration { };
class _tds__GetZeroConfigurationResponse { _XML __any; };
class _tds__SetZeroConfiguration { };
class _tds__SetZeroConfigurationResponse { };
class _tds__GetIPAddressFilter { };
class _tds__GetIPAddressFilterResponse { _XML __any; };
class _tds__SetIPAddressFilter { };
class _tds__SetIPAddressFilterResponse { };
class _tds__AddIPAddressFilter { };
class _tds__AddIPAddressFilterResponse { };
class _tds__RemoveIPAddressFilter { };
class _tds__RemoveIPAddressFilterResponse { };
class _tds__GetAccessPolicy { };
class _tds__GetAccessPolicyResponse { _XML __any; };
class _tds__SetAccessPolicy { };
class _tds__SetAccessPolicyResponse { };
class _tds__CreateCertificate { };
class _tds__CreateCertificateResponse { _XML __any; };
class _tds__GetCertificates { };
class _tds__GetCertificatesResponse { };
class _tds__GetCertificatesStatus { };
class _tds__GetCertificatesStatusResponse { };
class _tds__SetCertificatesStatus { };
class _tds__SetCertificatesStatusResponse { };
class _tds__DeleteCertificates { };
class _tds__DeleteCertificatesResponse { };
class _tds__GetPkcs10Request { };
class _tds__GetPkcs10RequestResponse { _XML __any; };
class _tds__LoadCertificates { };
class _tds__LoadCertificatesResponse { };
class _tds__GetClientCertificateMode { };
class _tds__GetClientCertificateModeResponse { _XML __any; };
class _tds__SetClientCertificateMode { };
class _tds__SetClientCertificateModeResponse { };
class _tds__GetRelayOutputs { };
class _tds__GetRelayOutputsResponse { };
class _tds__SetRelayOutputSettings { };
class _tds__SetRelayOutputSettingsResponse { };
class _tds__SetRelayOutputState { };
class _tds__SetRelayOutputStateResponse { };
class _tds__SendAuxiliaryCommand { };
class _tds__SendAuxiliaryCommandResponse { };
class _tds__GetCACertificates { };
class _tds__GetCACertificatesResponse { };
class _tds__LoadCertificateWithPrivateKey { };
class _tds__LoadCertificateWithPrivateKeyResponse { };
class _tds__GetCertificateInformation { };
class _tds__GetCertificateInformationResponse { _XML __any; };
class _tds__LoadCACertificates { };
class _tds__LoadCACertificatesResponse { };
class _tds__CreateDot1XConfiguration { };
class _tds__CreateDot1XConfigurationResponse { };
class _tds__SetDot1XConfiguration { };
class _tds__SetDot1XConfigurationResponse { };
class _tds__GetDot1XConfiguration { };
class _tds__GetDot1XConfigurationResponse { _XML __any; };
class _tds__GetDot1XConfigurations { };
class _tds__GetDot1XConfigurationsResponse { };
class _tds__DeleteDot1XConfiguration { };
class _tds__DeleteDot1XConfigurationResponse { };
class _tds__GetDot11Capabilities { };
class _tds__GetDot11CapabilitiesResponse { _XML __any; };
class _tds__GetDot11Status { };
class _tds__GetDot11StatusResponse { };
class _tds__ScanAvailableDot11Networks { };
class _tds__ScanAvailableDot11NetworksResponse { };
class _tds__GetSystemUris { };
class _tds__GetSystemUrisResponse { };
class _tds__StartFirmwareUpgrade { };
class _tds__StartFirmwareUpgradeResponse { _XML __any; };
class _tds__StartSystemRestore { };
class _tds__StartSystemRestoreResponse { _XML __any; };
class _tev__GetServiceCapabilities { };
class _tev__GetServiceCapabilitiesResponse { _XML __any; };
class _tev__CreatePullPointSubscription { };
class _tev__CreatePullPointSubscriptionResponse { _XML __any; };
class _tev__GetEventProperties { };
class _tev__GetEventPropertiesResponse { _XML __any; };
class _trt__GetServiceCapabilities { };
class _trt__GetServiceCapabilitiesResponse { _XML __any; };
class _trt__GetAudioSources { };
class _trt__GetAudioSourcesResponse { };
class _trt__GetAudioOutputs { };
class _trt__GetAudioOutputsResponse { };
class _trt__CreateProfile { };
class _trt__CreateProfileResponse { _XML __any; };
class _trt__AddVideoEncoderConfiguration { };
class _trt__AddVideoEncoderConfigurationResponse { };
class _trt__AddVideoSourceConfiguration { };
class _trt__AddVideoSourceConfigurationResponse { };
class _trt__AddAudioEncoderConfiguration { };
class _trt__AddAudioEncoderConfigurationResponse { };
class _trt__AddAudioSourceConfiguration { };
class _trt__AddAudioSourceConfigurationResponse { };
class _trt__AddPTZConfiguration { };
class _trt__AddPTZConfigurationResponse { };
class _trt__AddVideoAnalyticsConfiguration { };
class _trt__AddVideoAnalyticsConfigurationResponse { };
class _trt__AddMetadataConfiguration { };
class _trt__AddMetadataConfigurationResponse { };
class _trt__AddAudioOutputConfiguration { };
class _trt__AddAudioOutputConfigurationResponse { };
class _trt__AddAudioDecoderConfiguration { };
class _trt__AddAudioDecoderConfigurationResponse { };
class _trt__RemoveVideoEncoderConfiguration { };
class _trt__RemoveVideoEncoderConfigurationResponse { };
class _trt__RemoveVideoSourceConfiguration { };
class _trt__RemoveVideoSourceConfigurationResponse { };
class _trt__RemoveAudioEncoderConfiguration { };
class _trt__RemoveAudioEncoderConfigurationResponse { };
class _trt__RemoveAudioSourceConfiguration { };
class _trt__RemoveAudioSourceConfigurationResponse { };
class _trt__RemovePTZConfiguration { };
class _trt__RemovePTZConfigurationResponse { };
class _trt__RemoveVideoAnalyticsConfiguration { };
class _trt__RemoveVideoAnalyticsConfigurationResponse { };
class _trt__RemoveMetadataConfiguration { };
class _trt__RemoveMetadataConfigurationResponse { };
class _trt__RemoveAudioOutputConfiguration { };
class _trt__RemoveAudioOutputConfigurationResponse { };
class _trt__RemoveAudioDecoderConfiguration { };
class _trt__RemoveAudioDecoderConfigurationResponse { };
class _trt__DeleteProfile { };
class _trt__DeleteProfileResponse { };
class _trt__GetVideoSourceConfigurations { };
class _trt__GetVideoSourceConfigurationsResponse { };
class _trt__GetVideoEncoderConfigurations { };
class _trt__GetVideoEncoderConfigurationsResponse { };
class _trt__GetAudioSourceConfigurations { };
class _trt__GetAudioSourceConfigurationsResponse { };
class _trt__GetAudioEncoderConfigurations { };
class _trt__GetAudioEncoderConfigurationsResponse { };
class _trt__GetVideoAnalyticsConfigurations { };
class _trt__GetVideoAnalyticsConfigurationsResponse { };
class _trt__GetMetadataConfigurations { };
class _trt__GetMetadataConfigurationsResponse { };
class _trt__GetAudioOutputConfigurations { };
class _trt__GetAudioOutputConfigurationsResponse { };
class _trt__GetAudioDecoderConfigurations { };
class _trt__GetAudioDecoderConfigurationsResponse { };
class _trt__GetVideoSourceConfiguration { };
class _trt__GetVideoSourceConfigurationResponse { _XML __any; };
class _trt__GetVideoEncoderConfiguration { };
class _trt__GetVideoEncoderConfigurationResponse { _XML __any; };
class _trt__GetAudioSourceConfiguration { };
class _trt__GetAudioSourceConfigurationResponse { _XML __any; };
class _trt__GetAudioEncoderConfiguration { };
class _trt__GetAudioEncoderConfigurationResponse { _XML __any; };
class _trt__GetVideoAnalyticsConfiguration { };
class _trt__GetVideoAnalyticsConfigurationResponse { _XML __any; };
class _trt__GetMetadataConfiguration { };
class _trt__GetMetadataConfigurationResponse { _XML __any; };
class _trt__GetAudioOutputConfiguration { };
class _trt__GetAudioOutputConfigurationResponse { _XML __any; };
class _trt__GetAudioDecoderConfiguration { };
class _trt__GetAudioDecoderConfigurationResponse { _XML __any; };
class _trt__GetCompatibleVideoEncoderConfigurations { };
class _trt__GetCompatibleVideoEncoderConfigurationsResponse { };
class _trt__GetCompatibleVideoSourceConfigurations { };
class _trt__GetCompatibleVideoSourceConfigurationsResponse { };
class _trt__GetCompatibleAudioEncoderConfigurations { };
class _trt__GetCompatibleAudioEncoderConfigurationsResponse { };
class _trt__GetCompatibleAudioSourceConfigurations { };
class _trt__GetCompatibleAudioSourceConfigurationsResponse { };
class _trt__GetCompatibleVideoAnalyticsConfigurations { };
class _trt__GetCompatibleVideoAnalyticsConfigurationsResponse { };
class _trt__GetCompatibleMetadataConfigurations { };
class _trt__GetCompatibleMetadataConfigurationsResponse { };
class _trt__GetCompatibleAudioOutputConfigurations { };
class _trt__GetCompatibleAudioOutputConfigurationsResponse { };
class _trt__GetCompatibleAudioDecoderConfigurations { };
class _trt__GetCompatibleAudioDecoderConfigurationsResponse { };
class _trt__SetVideoSourceConfiguration { };
class _trt__SetVideoSourceConfigurationResponse { };
class _trt__SetVideoEncoderConfiguration { };
class _trt__SetVideoEncoderConfigurationResponse { };
class _trt__SetAudioSourceConfiguration { };
class _trt__SetAudioSourceConfigurationResponse { };
class _trt__SetAudioEncoderConfiguration { };
class _trt__SetAudioEncoderConfigurationResponse { };
class _trt__SetVideoAnalyticsConfiguration { };
class _trt__SetVideoAnalyticsConfigurationResponse { };
class _trt__SetMetadataConfiguration { };
class _trt__SetMetadataConfigurationResponse { };
class _trt__SetAudioOutputConfiguration { };
class _trt__SetAudioOutputConfigurationResponse { };
class _trt__SetAudioDecoderConfiguration { };
class _trt__SetAudioDecoderConfigurationResponse { };
class _trt__GetVideoSourceConfigurationOptions { };
class _trt__GetVideoSourceConfigurationOptionsResponse { _XML __any; };
class _trt__GetVideoEncoderConfigurationOptions { };
class _trt__GetVideoEncoderConfigurationOptionsResponse { _XML __any; };
class _trt__GetAudioSourceConfigurationOptions { };
class _trt__GetAudioSourceConfigurationOptionsResponse { _XML __any; };
class _trt__GetAudioEncoderConfigurationOptions { };
class _trt__GetAudioEncoderConfigurationOptionsResponse { _XML __any; };
class _trt__GetMetadataConfigurationOptions { };
class _trt__GetMetadataConfigurationOptionsResponse { _XML __any; };
class _trt__GetAudioOutputConfigurationOptions { };
class _trt__GetAudioOutputConfigurationOptionsResponse { _XML __any; };
class _trt__GetAudioDecoderConfigurationOptions { };
class _trt__GetAudioDecoderConfigurationOptionsResponse { _XML __any; };
class _trt__GetGuaranteedNumberOfVideoEncoderInstances { };
class _trt__GetGuaranteedNumberOfVideoEncoderInstancesResponse { _XML __any; };
class _trt__StartMulticastStreaming { };
class _trt__StartMulticastStreamingResponse { };
class _trt__StopMulticastStreaming { };
class _trt__StopMulticastStreamingResponse { };
class _trt__SetSynchronizationPoint { };
class _trt__SetSynchronizationPointResponse { };
class _tls__GetServiceCapabilities { };
class _tls__GetServiceCapabilitiesResponse { _XML __any; };
class _tls__GetLayout { };
class _tls__GetLayoutResponse { _XML __any; };
class _tls__SetLayout { };
class _tls__SetLayoutResponse { };
class _tls__GetDisplayOptions { };
class _tls__GetDisplayOptionsResponse { _XML __any; };
class _tls__GetPaneConfigurations { };
class _tls__GetPaneConfigurationsResponse { _XML __any; };
class _tls__GetPaneConfiguration { };
class _tls__GetPaneConfigurationResponse { _XML __any; };
class _tls__SetPaneConfigurations { };
class _tls__SetPaneConfigurationsResponse { };
class _tls__SetPaneConfiguration { };
class _tls__SetPaneConfigurationResponse { };
class _tls__CreatePaneConfiguration { };
class _tls__CreatePaneConfigurationResponse { _XML __any; };
class _tls__DeletePaneConfiguration { };
class _tls__DeletePaneConfigurationResponse { };
class _timg__GetServiceCapabilities { };
class _timg__GetServiceCapabilitiesResponse { };
class _timg__GetImagingSettings { };
class _timg__GetImagingSettingsResponse { };
class _timg__SetImagingSettings { };
class _timg__SetImagingSettingsResponse { };
class _timg__GetOptions { };
class _timg__GetOptionsResponse { };
class _timg__Move { };
class _timg__MoveResponse { };
class _timg__Stop { };
class _timg__StopResponse { };
class _timg__GetStatus { };
class _timg__GetStatusResponse { };
class _timg__GetMoveOptions { };
class _timg__GetMoveOptionsResponse { };
class _tptz__GetServiceCapabilities { };
class _tptz__GetServiceCapabilitiesResponse { };
class _tptz__GetConfigurations { };
class _tptz__GetConfigurationsResponse { };
class _tptz__GetPresets { };
class _tptz__GetPresetsResponse { };
class _tptz__SetPreset { };
class _tptz__SetPresetResponse { };
class _tptz__RemovePreset { };
class _tptz__RemovePresetResponse { };
class _tptz__GotoPreset { };
class _tptz__GotoPresetResponse { };
class _tptz__GetStatus { };
class _tptz__GetStatusResponse { };
class _tptz__GetConfiguration { };
class _tptz__GetConfigurationResponse { };
class _tptz__GetNodes { };
class _tptz__GetNodesResponse { };
class _tptz__GetNode { };
class _tptz__GetNodeResponse { };
class _tptz__SetConfiguration { };
class _tptz__SetConfigurationResponse { };
class _tptz__GetConfigurationOptions { };
class _tptz__GetConfigurationOptionsResponse { };
class _tptz__GotoHomePosition { };
class _tptz__GotoHomePositionResponse { };
class _tptz__SetHomePosition { };
class _tptz__SetHomePositionResponse { };
class _tptz__ContinuousMove { };
class _tptz__ContinuousMoveResponse { };
class _tptz__RelativeMove { };
class _tptz__RelativeMoveResponse { };
class _tptz__SendAuxiliaryCommand { };
class _tptz__SendAuxiliaryCommandResponse { };
class _tptz__AbsoluteMove { };
class _tptz__AbsoluteMoveResponse { };
class _tptz__Stop { };
class _tptz__StopResponse { };
class _tptz__GetPresetTours { };
class _tptz__GetPresetToursResponse { };
class _tptz__GetPresetTour { };
class _tptz__GetPresetTourResponse { };
class _tptz__GetPresetTourOptions { };
class _tptz__GetPresetTourOptionsResponse { };
class _tptz__CreatePresetTour { };
class _tptz__CreatePresetTourResponse { };
class _tptz__ModifyPresetTour { };
class _tptz__ModifyPresetTourResponse { };
class _tptz__OperatePresetTour { };
class _tptz__OperatePresetTourResponse { };
class _tptz__RemovePresetTour { };
class _tptz__RemovePresetTourResponse { };

int __tds__GetServices(_tds__GetServices* tds__GetServices, _tds__GetServicesResponse& tds__GetServicesResponse);
int __tds__GetServiceCapabilities(_tds__GetServiceCapabilities* tds__GetServiceCapabilities, _tds__GetServiceCapabilitiesResponse& tds__GetServiceCapabilitiesResponse);
int __tds__SetSystemDateAndTime(_tds__SetSystemDateAndTime* tds__SetSystemDateAndTime, _tds__SetSystemDateAndTimeResponse& tds__SetSystemDateAndTimeResponse);
int __tds__SetSystemFactoryDefault(_tds__SetSystemFactoryDefault* tds__SetSystemFactoryDefault, _tds__SetSystemFactoryDefaultResponse& tds__SetSystemFactoryDefaultResponse);
int __tds__UpgradeSystemFirmware(_tds__UpgradeSystemFirmware* tds__UpgradeSystemFirmware, _tds__UpgradeSystemFirmwareResponse& tds__UpgradeSystemFirmwareResponse);
int __tds__SystemReboot(_tds__SystemReboot* tds__SystemReboot, _tds__SystemRebootResponse& tds__SystemRebootResponse);
int __tds__RestoreSystem(_tds__RestoreSystem* tds__RestoreSystem, _tds__RestoreSystemResponse& tds__RestoreSystemResponse);
int __tds__GetSystemBackup(_tds__GetSystemBackup* tds__GetSystemBackup, _tds__GetSystemBackupResponse& tds__GetSystemBackupResponse);
int __tds__GetSystemLog(_tds__GetSystemLog* tds__GetSystemLog, _tds__GetSystemLogResponse& tds__GetSystemLogResponse);
int __tds__GetSystemSupportInformation(_tds__GetSystemSupportInformation* tds__GetSystemSupportInformation, _tds__GetSystemSupportInformationResponse& tds__GetSystemSupportInformationResponse);
int __tds__SetScopes(_tds__SetScopes* tds__SetScopes, _tds__SetScopesResponse& tds__SetScopesResponse);
int __tds__AddScopes(_tds__AddScopes* tds__AddScopes, _tds__AddScopesResponse& tds__AddScopesResponse);
int __tds__RemoveScopes(_tds__RemoveScopes* tds__RemoveScopes, _tds__RemoveScopesResponse& tds__RemoveScopesResponse);
int __tds__GetDiscoveryMode(_tds__GetDiscoveryMode* tds__GetDiscoveryMode, _tds__GetDiscoveryModeResponse& tds__GetDiscoveryModeResponse);
int __tds__SetDiscoveryMode(_tds__SetDiscoveryMode* tds__SetDiscoveryMode, _tds__SetDiscoveryModeResponse& tds__SetDiscoveryModeResponse);
int __tds__GetRemoteDiscoveryMode(_tds__GetRemoteDiscoveryMode* tds__GetRemoteDiscoveryMode, _tds__GetRemoteDiscoveryModeResponse& tds__GetRemoteDiscoveryModeResponse);
int __tds__SetRemoteDiscoveryMode(_tds__SetRemoteDiscoveryMode* tds__SetRemoteDiscoveryMode, _tds__SetRemoteDiscoveryModeResponse& tds__SetRemoteDiscoveryModeResponse);
int __tds__GetDPAddresses(_tds__GetDPAddresses* tds__GetDPAddresses, _tds__GetDPAddressesResponse& tds__GetDPAddressesResponse);
int __tds__GetEndpointReference(_tds__GetEndpointReference* tds__GetEndpointReference, _tds__GetEndpointReferenceResponse& tds__GetEndpointReferenceResponse);
int __tds__GetRemoteUser(_tds__GetRemoteUser* tds__GetRemoteUser, _tds__GetRemoteUserResponse& tds__GetRemoteUserResponse);
int __tds__SetRemoteUser(_tds__SetRemoteUser* tds__SetRemoteUser, _tds__SetRemoteUserResponse& tds__SetRemoteUserResponse);
int __tds__GetUsers(_tds__GetUsers* tds__GetUsers, _tds__GetUsersResponse& tds__GetUsersResponse);
int __tds__CreateUsers(_tds__CreateUsers* tds__CreateUsers, _tds__CreateUsersResponse& tds__CreateUsersResponse);
int __tds__DeleteUsers(_tds__DeleteUsers* tds__DeleteUsers, _tds__DeleteUsersResponse& tds__DeleteUsersResponse);
int __tds__SetUser(_tds__SetUser* tds__SetUser, _tds__SetUserResponse& tds__SetUserResponse);
int __tds__GetWsdlUrl(_tds__GetWsdlUrl* tds__GetWsdlUrl, _tds__GetWsdlUrlResponse& tds__GetWsdlUrlResponse);
int __tds__SetDPAddresses(_tds__SetDPAddresses* tds__SetDPAddresses, _tds__SetDPAddressesResponse& tds__SetDPAddressesResponse);
int __tds__GetHostname(_tds__GetHostname* tds__GetHostname, _tds__GetHostnameResponse& tds__GetHostnameResponse);
int __tds__SetHostname(_tds__SetHostname* tds__SetHostname, _tds__SetHostnameResponse& tds__SetHostnameResponse);
int __tds__SetHostnameFromDHCP(_tds__SetHostnameFromDHCP* tds__SetHostnameFromDHCP, _tds__SetHostnameFromDHCPResponse& tds__SetHostnameFromDHCPResponse);
int __tds__GetDNS(_tds__GetDNS* tds__GetDNS, _tds__GetDNSResponse& tds__GetDNSResponse);
int __tds__SetDNS(_tds__SetDNS* tds__SetDNS, _tds__SetDNSResponse& tds__SetDNSResponse);
int __tds__GetNTP(_tds__GetNTP* tds__GetNTP, _tds__GetNTPResponse& tds__GetNTPResponse);
int __tds__SetNTP(_tds__SetNTP* tds__SetNTP, _tds__SetNTPResponse& tds__SetNTPResponse);
int __tds__GetDynamicDNS(_tds__GetDynamicDNS* tds__GetDynamicDNS, _tds__GetDynamicDNSResponse& tds__GetDynamicDNSResponse);
int __tds__SetDynamicDNS(_tds__SetDynamicDNS* tds__SetDynamicDNS, _tds__SetDynamicDNSResponse& tds__SetDynamicDNSResponse);
int __tds__GetNetworkInterfaces(_tds__GetNetworkInterfaces* tds__GetNetworkInterfaces, _tds__GetNetworkInterfacesResponse& tds__GetNetworkInterfacesResponse);
int __tds__SetNetworkInterfaces(_tds__SetNetworkInterfaces* tds__SetNetworkInterfaces, _tds__SetNetworkInterfacesResponse& tds__SetNetworkInterfacesResponse);
int __tds__GetNetworkProtocols(_tds__GetNetworkProtocols* tds__GetNetworkProtocols, _tds__GetNetworkProtocolsResponse& tds__GetNetworkProtocolsResponse);
int __tds__SetNetworkProtocols(_tds__SetNetworkProtocols* tds__SetNetworkProtocols, _tds__SetNetworkProtocolsResponse& tds__SetNetworkProtocolsResponse);
int __tds__GetNetworkDefaultGateway(_tds__GetNetworkDefaultGateway* tds__GetNetworkDefaultGateway, _tds__GetNetworkDefaultGatewayResponse& tds__GetNetworkDefaultGatewayResponse);
int __tds__SetNetworkDefaultGateway(_tds__SetNetworkDefaultGateway* tds__SetNetworkDefaultGateway, _tds__SetNetworkDefaultGatewayResponse& tds__SetNetworkDefaultGatewayResponse);
int __tds__GetZeroConfiguration(_tds__GetZeroConfiguration* tds__GetZeroConfiguration, _tds__GetZeroConfigurationResponse& tds__GetZeroConfigurationResponse);
int __tds__SetZeroConfiguration(_tds__SetZeroConfiguration* tds__SetZeroConfiguration, _tds__SetZeroConfigurationResponse& tds__SetZeroConfigurationResponse);
int __tds__GetIPAddressFilter(_tds__GetIPAddressFilter* tds__GetIPAddressFilter, _tds__GetIPAddressFilterResponse& tds__GetIPAddressFilterResponse);
int __tds__SetIPAddressFilter(_tds__SetIPAddressFilter* tds__SetIPAddressFilter, _tds__SetIPAddressFilterResponse& tds__SetIPAddressFilterResponse);
int __tds__AddIPAddressFilter(_tds__AddIPAddressFilter* tds__AddIPAddressFilter, _tds__AddIPAddressFilterResponse& tds__AddIPAddressFilterResponse);
int __tds__RemoveIPAddressFilter(_tds__RemoveIPAddressFilter* tds__RemoveIPAddressFilter, _tds__RemoveIPAddressFilterResponse& tds__RemoveIPAddressFilterResponse);
int __tds__GetAccessPolicy(_tds__GetAccessPolicy* tds__GetAccessPolicy, _tds__GetAccessPolicyResponse& tds__GetAccessPolicyResponse);
int __tds__SetAccessPolicy(_tds__SetAccessPolicy* tds__SetAccessPolicy, _tds__SetAccessPolicyResponse& tds__SetAccessPolicyResponse);
int __tds__CreateCertificate(_tds__CreateCertificate* tds__CreateCertificate, _tds__CreateCertificateResponse& tds__CreateCertificateResponse);
int __tds__GetCertificates(_tds__GetCertificates* tds__GetCertificates, _tds__GetCertificatesResponse& tds__GetCertificatesResponse);
int __tds__GetCertificatesStatus(_tds__GetCertificatesStatus* tds__GetCertificatesStatus, _tds__GetCertificatesStatusResponse& tds__GetCertificatesStatusResponse);
int __tds__SetCertificatesStatus(_tds__SetCertificatesStatus* tds__SetCertificatesStatus, _tds__SetCertificatesStatusResponse& tds__SetCertificatesStatusResponse);
int __tds__DeleteCertificates(_tds__DeleteCertificates* tds__DeleteCertificates, _tds__DeleteCertificatesResponse& tds__DeleteCertificatesResponse);
int __tds__GetPkcs10Request(_tds__GetPkcs10Request* tds__GetPkcs10Request, _tds__GetPkcs10RequestResponse& tds__GetPkcs10RequestResponse);
int __tds__LoadCertificates(_tds__LoadCertificates* tds__LoadCertificates, _tds__LoadCertificatesResponse& tds__LoadCertificatesResponse);
int __tds__GetClientCertificateMode(_tds__GetClientCertificateMode* tds__GetClientCertificateMode, _tds__GetClientCertificateModeResponse& tds__GetClientCertificateModeResponse);
int __tds__SetClientCertificateMode(_tds__SetClientCertificateMode* tds__SetClientCertificateMode, _tds__SetClientCertificateModeResponse& tds__SetClientCertificateModeResponse);
int __tds__GetRelayOutputs(_tds__GetRelayOutputs* tds__GetRelayOutputs, _tds__GetRelayOutputsResponse& tds__GetRelayOutputsResponse);
int __tds__SetRelayOutputSettings(_tds__SetRelayOutputSettings* tds__SetRelayOutputSettings, _tds__SetRelayOutputSettingsResponse& tds__SetRelayOutputSettingsResponse);
int __tds__SetRelayOutputState(_tds__SetRelayOutputState* tds__SetRelayOutputState, _tds__SetRelayOutputStateResponse& tds__SetRelayOutputStateResponse);
int __tds__SendAuxiliaryCommand(_tds__SendAuxiliaryCommand* tds__SendAuxiliaryCommand, _tds__SendAuxiliaryCommandResponse& tds__SendAuxiliaryCommandResponse);
int __tds__GetCACertificates(_tds__GetCACertificates* tds__GetCACertificates, _tds__GetCACertificatesResponse& tds__GetCACertificatesResponse);
int __tds__LoadCertificateWithPrivateKey(_tds__LoadCertificateWithPrivateKey* tds__LoadCertificateWithPrivateKey, _tds__LoadCertificateWithPrivateKeyResponse& tds__LoadCertificateWithPrivateKeyResponse);
int __tds__GetCertificateInformation(_tds__GetCertificateInformation* tds__GetCertificateInformation, _tds__GetCertificateInformationResponse& tds__GetCertificateInformationResponse);
int __tds__LoadCACertificates(_tds__LoadCACertificates* tds__LoadCACertificates, _tds__LoadCACertificatesResponse& tds__LoadCACertificatesResponse);
int __tds__CreateDot1XConfiguration(_tds__CreateDot1XConfiguration* tds__CreateDot1XConfiguration, _tds__CreateDot1XConfigurationResponse& tds__CreateDot1XConfigurationResponse);
int __tds__SetDot1XConfiguration(_tds__SetDot1XConfiguration* tds__SetDot1XConfiguration, _tds__SetDot1XConfigurationResponse& tds__SetDot1XConfigurationResponse);
int __tds__GetDot1XConfiguration(_tds__GetDot1XConfiguration* tds__GetDot1XConfiguration, _tds__GetDot1XConfigurationResponse& tds__GetDot1XConfigurationResponse);
int __tds__GetDot1XConfigurations(_tds__GetDot1XConfigurations* tds__GetDot1XConfigurations, _tds__GetDot1XConfigurationsResponse& tds__GetDot1XConfigurationsResponse);
int __tds__DeleteDot1XConfiguration(_tds__DeleteDot1XConfiguration* tds__DeleteDot1XConfiguration, _tds__DeleteDot1XConfigurationResponse& tds__DeleteDot1XConfigurationResponse);
int __tds__GetDot11Capabilities(_tds__GetDot11Capabilities* tds__GetDot11Capabilities, _tds__GetDot11CapabilitiesResponse& tds__GetDot11CapabilitiesResponse);
int __tds__GetDot11Status(_tds__GetDot11Status* tds__GetDot11Status, _tds__GetDot11StatusResponse& tds__GetDot11StatusResponse);
int __tds__ScanAvailableDot11Networks(_tds__ScanAvailableDot11Networks* tds__ScanAvailableDot11Networks, _tds__ScanAvailableDot11NetworksResponse& tds__ScanAvailableDot11NetworksResponse);
int __tds__GetSystemUris(_tds__GetSystemUris* tds__GetSystemUris, _tds__GetSystemUrisResponse& tds__GetSystemUrisResponse);
int __tds__StartFirmwareUpgrade(_tds__StartFirmwareUpgrade* tds__StartFirmwareUpgrade, _tds__StartFirmwareUpgradeResponse& tds__StartFirmwareUpgradeResponse);
int __tds__StartSystemRestore(_tds__StartSystemRestore* tds__StartSystemRestore, _tds__StartSystemRestoreResponse& tds__StartSystemRestoreResponse);
int __tds__GetDeviceInformation(_tds__GetDeviceInformation* tds__GetDeviceInformation, _tds__GetDeviceInformationResponse& tds__GetDeviceInformationResponse);
int __tds__GetScopes(_tds__GetScopes* tds__GetScopes, _tds__GetScopesResponse& tds__GetScopesResponse);
int __tds__GetCapabilities(_tds__GetCapabilities* tds__GetCapabilities, _tds__GetCapabilitiesResponse& tds__GetCapabilitiesResponse);
int __tds__GetSystemDateAndTime(_tds__GetSystemDateAndTime* tds__GetSystemDateAndTime, _tds__GetSystemDateAndTimeResponse& tds__GetSystemDateAndTimeResponse);
int __tev__GetServiceCapabilities(_tev__GetServiceCapabilities* tev__GetServiceCapabilities, _tev__GetServiceCapabilitiesResponse& tev__GetServiceCapabilitiesResponse);
int __tev__CreatePullPointSubscription(_tev__CreatePullPointSubscription* tev__CreatePullPointSubscription, _tev__CreatePullPointSubscriptionResponse& tev__CreatePullPointSubscriptionResponse);
int __tev__GetEventProperties(_tev__GetEventProperties* tev__GetEventProperties, _tev__GetEventPropertiesResponse& tev__GetEventPropertiesResponse);
int __trt__GetServiceCapabilities(_trt__GetServiceCapabilities* trt__GetServiceCapabilities, _trt__GetServiceCapabilitiesResponse& trt__GetServiceCapabilitiesResponse);
int __trt__GetAudioSources(_trt__GetAudioSources* trt__GetAudioSources, _trt__GetAudioSourcesResponse& trt__GetAudioSourcesResponse);
int __trt__GetAudioOutputs(_trt__GetAudioOutputs* trt__GetAudioOutputs, _trt__GetAudioOutputsResponse& trt__GetAudioOutputsResponse);
int __trt__CreateProfile(_trt__CreateProfile* trt__CreateProfile, _trt__CreateProfileResponse& trt__CreateProfileResponse);
int __trt__AddVideoEncoderConfiguration(_trt__AddVideoEncoderConfiguration* trt__AddVideoEncoderConfiguration, _trt__AddVideoEncoderConfigurationResponse& trt__AddVideoEncoderConfigurationResponse);
int __trt__AddVideoSourceConfiguration(_trt__AddVideoSourceConfiguration* trt__AddVideoSourceConfiguration, _trt__AddVideoSourceConfigurationResponse& trt__AddVideoSourceConfigurationResponse);
int __trt__AddAudioEncoderConfiguration(_trt__AddAudioEncoderConfiguration* trt__AddAudioEncoderConfiguration, _trt__AddAudioEncoderConfigurationResponse& trt__AddAudioEncoderConfigurationResponse);
int __trt__AddAudioSourceConfiguration(_trt__AddAudioSourceConfiguration* trt__AddAudioSourceConfiguration, _trt__AddAudioSourceConfigurationResponse& trt__AddAudioSourceConfigurationResponse);
int __trt__AddPTZConfiguration(_trt__AddPTZConfiguration* trt__AddPTZConfiguration, _trt__AddPTZConfigurationResponse& trt__AddPTZConfigurationResponse);
int __trt__AddVideoAnalyticsConfiguration(_trt__AddVideoAnalyticsConfiguration* trt__AddVideoAnalyticsConfiguration, _trt__AddVideoAnalyticsConfigurationResponse& trt__AddVideoAnalyticsConfigurationResponse);
int __trt__AddMetadataConfiguration(_trt__AddMetadataConfiguration* trt__AddMetadataConfiguration, _trt__AddMetadataConfigurationResponse& trt__AddMetadataConfigurationResponse);
int __trt__AddAudioOutputConfiguration(_trt__AddAudioOutputConfiguration* trt__AddAudioOutputConfiguration, _trt__AddAudioOutputConfigurationResponse& trt__AddAudioOutputConfigurationResponse);
int __trt__AddAudioDecoderConfiguration(_trt__AddAudioDecoderConfiguration* trt__AddAudioDecoderConfiguration, _trt__AddAudioDecoderConfigurationResponse& trt__AddAudioDecoderConfigurationResponse);
int __trt__RemoveVideoEncoderConfiguration(_trt__RemoveVideoEncoderConfiguration* trt__RemoveVideoEncoderConfiguration, _trt__RemoveVideoEncoderConfigurationResponse& trt__RemoveVideoEncoderConfigurationResponse);
int __trt__RemoveVideoSourceConfiguration(_trt__RemoveVideoSourceConfiguration* trt__RemoveVideoSourceConfiguration, _trt__RemoveVideoSourceConfigurationResponse& trt__RemoveVideoSourceConfigurationResponse);
int __trt__RemoveAudioEncoderConfiguration(_trt__RemoveAudioEncoderConfiguration* trt__RemoveAudioEncoderConfiguration, _trt__RemoveAudioEncoderConfigurationResponse& trt__RemoveAudioEncoderConfigurationResponse);
int __trt__RemoveAudioSourceConfiguration(_trt__RemoveAudioSourceConfiguration* trt__RemoveAudioSourceConfiguration, _trt__RemoveAudioSourceConfigurationResponse& trt__RemoveAudioSourceConfigurationResponse);
int __trt__RemovePTZConfiguration(_trt__RemovePTZConfiguration* trt__RemovePTZConfiguration, _trt__RemovePTZConfigurationResponse& trt__RemovePTZConfigurationResponse);
int __trt__RemoveVideoAnalyticsConfiguration(_trt__RemoveVideoAnalyticsConfiguration* trt__RemoveVideoAnalyticsConfiguration, _trt__RemoveVideoAnalyticsConfigurationResponse& trt__RemoveVideoAnalyticsConfigurationResponse);
int __trt__RemoveMetadataConfiguration(_trt__RemoveMetadataConfiguration* trt__RemoveMetadataConfiguration, _trt__RemoveMetadataConfigurationResponse& trt__RemoveMetadataConfigurationResponse);
int __trt__RemoveAudioOutputConfiguration(_trt__RemoveAudioOutputConfiguration* trt__RemoveAudioOutputConfiguration, _trt__RemoveAudioOutputConfigurationResponse& trt__RemoveAudioOutputConfigurationResponse);
int __trt__RemoveAudioDecoderConfiguration(_trt__RemoveAudioDecoderConfiguration* trt__RemoveAudioDecoderConfiguration, _trt__RemoveAudioDecoderConfigurationResponse& trt__RemoveAudioDecoderConfigurationResponse);
int __trt__DeleteProfile(_trt__DeleteProfile* trt__DeleteProfile, _trt__DeleteProfileResponse& trt__DeleteProfileResponse);
int __trt__GetVideoSourceConfigurations(_trt__GetVideoSourceConfigurations* trt__GetVideoSourceConfigurations, _trt__GetVideoSourceConfigurationsResponse& trt__GetVideoSourceConfigurationsResponse);
int __trt__GetVideoEncoderConfigurations(_trt__GetVideoEncoderConfigurations* trt__GetVideoEncoderConfigurations, _trt__GetVideoEncoderConfigurationsResponse& trt__GetVideoEncoderConfigurationsResponse);
int __trt__GetAudioSourceConfigurations(_trt__GetAudioSourceConfigurations* trt__GetAudioSourceConfigurations, _trt__GetAudioSourceConfigurationsResponse& trt__GetAudioSourceConfigurationsResponse);
int __trt__GetAudioEncoderConfigurations(_trt__GetAudioEncoderConfigurations* trt__GetAudioEncoderConfigurations, _trt__GetAudioEncoderConfigurationsResponse& trt__GetAudioEncoderConfigurationsResponse);
int __trt__GetVideoAnalyticsConfigurations(_trt__GetVideoAnalyticsConfigurations* trt__GetVideoAnalyticsConfigurations, _trt__GetVideoAnalyticsConfigurationsResponse& trt__GetVideoAnalyticsConfigurationsResponse);
int __trt__GetMetadataConfigurations(_trt__GetMetadataConfigurations* trt__GetMetadataConfigurations, _trt__GetMetadataConfigurationsResponse& trt__GetMetadataConfigurationsResponse);
int __trt__GetAudioOutputConfigurations(_trt__GetAudioOutputConfigurations* trt__GetAudioOutputConfigurations, _trt__GetAudioOutputConfigurationsResponse& trt__GetAudioOutputConfigurationsResponse);
int __trt__GetAudioDecoderConfigurations(_trt__GetAudioDecoderConfigurations* trt__GetAudioDecoderConfigurations, _trt__GetAudioDecoderConfigurationsResponse& trt__GetAudioDecoderConfigurationsResponse);
int __trt__GetVideoSourceConfiguration(_trt__GetVideoSourceConfiguration* trt__GetVideoSourceConfiguration, _trt__GetVideoSourceConfigurationResponse& trt__GetVideoSourceConfigurationResponse);
int __trt__GetVideoEncoderConfiguration(_trt__GetVideoEncoderConfiguration* trt__GetVideoEncoderConfiguration, _trt__GetVideoEncoderConfigurationResponse& trt__GetVideoEncoderConfigurationResponse);
int __trt__GetAudioSourceConfiguration(_trt__GetAudioSourceConfiguration* trt__GetAudioSourceConfiguration, _trt__GetAudioSourceConfigurationResponse& trt__GetAudioSourceConfigurationResponse);
int __trt__GetAudioEncoderConfiguration(_trt__GetAudioEncoderConfiguration* trt__GetAudioEncoderConfiguration, _trt__GetAudioEncoderConfigurationResponse& trt__GetAudioEncoderConfigurationResponse);
int __trt__GetVideoAnalyticsConfiguration(_trt__GetVideoAnalyticsConfiguration* trt__GetVideoAnalyticsConfiguration, _trt__GetVideoAnalyticsConfigurationResponse& trt__GetVideoAnalyticsConfigurationResponse);
int __trt__GetMetadataConfiguration(_trt__GetMetadataConfiguration* trt__GetMetadataConfiguration, _trt__GetMetadataConfigurationResponse& trt__GetMetadataConfigurationResponse);
int __trt__GetAudioOutputConfiguration(_trt__GetAudioOutputConfiguration* trt__GetAudioOutputConfiguration, _trt__GetAudioOutputConfigurationResponse& trt__GetAudioOutputConfigurationResponse);
int __trt__GetAudioDecoderConfiguration(_trt__GetAudioDecoderConfiguration* trt__GetAudioDecoderConfiguration, _trt__GetAudioDecoderConfigurationResponse& trt__GetAudioDecoderConfigurationResponse);
int __trt__GetCompatibleVideoEncoderConfigurations(_trt__GetCompatibleVideoEncoderConfigurations* trt__GetCompatibleVideoEncoderConfigurations, _trt__GetCompatibleVideoEncoderConfigurationsResponse& trt__GetCompatibleVideoEncoderConfigurationsResponse);
int __trt__GetCompatibleVideoSourceConfigurations(_trt__GetCompatibleVideoSourceConfigurations* trt__GetCompatibleVideoSourceConfigurations, _trt__GetCompatibleVideoSourceConfigurationsResponse& trt__GetCompatibleVideoSourceConfigurationsResponse);
int __trt__GetCompatibleAudioEncoderConfigurations(_trt__GetCompatibleAudioEncoderConfigurations* trt__GetCompatibleAudioEncoderConfigurations, _trt__GetCompatibleAudioEncoderConfigurationsResponse& trt__GetCompatibleAudioEncoderConfigurationsResponse);
int __trt__GetCompatibleAudioSourceConfigurations(_trt__GetCompatibleAudioSourceConfigurations* trt__GetCompatibleAudioSourceConfigurations, _trt__GetCompatibleAudioSourceConfigurationsResponse& trt__GetCompatibleAudioSourceConfigurationsResponse);
int __trt__GetCompatibleVideoAnalyticsConfigurations(_trt__GetCompatibleVideoAnalyticsConfigurations* trt__GetCompatibleVideoAnalyticsConfigurations, _trt__GetCompatibleVideoAnalyticsConfigurationsResponse& trt__GetCompatibleVideoAnalyticsConfigurationsResponse);
int __trt__GetCompatibleMetadataConfigurations(_trt__GetCompatibleMetadataConfigurations* trt__GetCompatibleMetadataConfigurations, _trt__GetCompatibleMetadataConfigurationsResponse& trt__GetCompatibleMetadataConfigurationsResponse);
int __trt__GetCompatibleAudioOutputConfigurations(_trt__GetCompatibleAudioOutputConfigurations* trt__GetCompatibleAudioOutputConfigurations, _trt__GetCompatibleAudioOutputConfigurationsResponse& trt__GetCompatibleAudioOutputConfigurationsResponse);
int __trt__GetCompatibleAudioDecoderConfigurations(_trt__GetCompatibleAudioDecoderConfigurations* trt__GetCompatibleAudioDecoderConfigurations, _trt__GetCompatibleAudioDecoderConfigurationsResponse& trt__GetCompatibleAudioDecoderConfigurationsResponse);
int __trt__SetVideoSourceConfiguration(_trt__SetVideoSourceConfiguration* trt__SetVideoSourceConfiguration, _trt__SetVideoSourceConfigurationResponse& trt__SetVideoSourceConfigurationResponse);
int __trt__SetVideoEncoderConfiguration(_trt__SetVideoEncoderConfiguration* trt__SetVideoEncoderConfiguration, _trt__SetVideoEncoderConfigurationResponse& trt__SetVideoEncoderConfigurationResponse);
int __trt__SetAudioSourceConfiguration(_trt__SetAudioSourceConfiguration* trt__SetAudioSourceConfiguration, _trt__SetAudioSourceConfigurationResponse& trt__SetAudioSourceConfigurationResponse);
int __trt__SetAudioEncoderConfiguration(_trt__SetAudioEncoderConfiguration* trt__SetAudioEncoderConfiguration, _trt__SetAudioEncoderConfigurationResponse& trt__SetAudioEncoderConfigurationResponse);
int __trt__SetVideoAnalyticsConfiguration(_trt__SetVideoAnalyticsConfiguration* trt__SetVideoAnalyticsConfiguration, _trt__SetVideoAnalyticsConfigurationResponse& trt__SetVideoAnalyticsConfigurationResponse);
int __trt__SetMetadataConfiguration(_trt__SetMetadataConfiguration* trt__SetMetadataConfiguration, _trt__SetMetadataConfigurationResponse& trt__SetMetadataConfigurationResponse);
int __trt__SetAudioOutputConfiguration(_trt__SetAudioOutputConfiguration* trt__SetAudioOutputConfiguration, _trt__SetAudioOutputConfigurationResponse& trt__SetAudioOutputConfigurationResponse);
int __trt__SetAudioDecoderConfiguration(_trt__SetAudioDecoderConfiguration* trt__SetAudioDecoderConfiguration, _trt__SetAudioDecoderConfigurationResponse& trt__SetAudioDecoderConfigurationResponse);
int __trt__GetVideoSourceConfigurationOptions(_trt__GetVideoSourceConfigurationOptions* trt__GetVideoSourceConfigurationOptions, _trt__GetVideoSourceConfigurationOptionsResponse& trt__GetVideoSourceConfigurationOptionsResponse);
int __trt__GetVideoEncoderConfigurationOptions(_trt__GetVideoEncoderConfigurationOptions* trt__GetVideoEncoderConfigurationOptions, _trt__GetVideoEncoderConfigurationOptionsResponse& trt__GetVideoEncoderConfigurationOptionsResponse);
int __trt__GetAudioSourceConfigurationOptions(_trt__GetAudioSourceConfigurationOptions* trt__GetAudioSourceConfigurationOptions, _trt__GetAudioSourceConfigurationOptionsResponse& trt__GetAudioSourceConfigurationOptionsResponse);
int __trt__GetAudioEncoderConfigurationOptions(_trt__GetAudioEncoderConfigurationOptions* trt__GetAudioEncoderConfigurationOptions, _trt__GetAudioEncoderConfigurationOptionsResponse& trt__GetAudioEncoderConfigurationOptionsResponse);
int __trt__GetMetadataConfigurationOptions(_trt__GetMetadataConfigurationOptions* trt__GetMetadataConfigurationOptions, _trt__GetMetadataConfigurationOptionsResponse& trt__GetMetadataConfigurationOptionsResponse);
int __trt__GetAudioOutputConfigurationOptions(_trt__GetAudioOutputConfigurationOptions* trt__GetAudioOutputConfigurationOptions, _trt__GetAudioOutputConfigurationOptionsResponse& trt__GetAudioOutputConfigurationOptionsResponse);
int __trt__GetAudioDecoderConfigurationOptions(_trt__GetAudioDecoderConfigurationOptions* trt__GetAudioDecoderConfigurationOptions, _trt__GetAudioDecoderConfigurationOptionsResponse& trt__GetAudioDecoderConfigurationOptionsResponse);
int __trt__GetGuaranteedNumberOfVideoEncoderInstances(_trt__GetGuaranteedNumberOfVideoEncoderInstances* trt__GetGuaranteedNumberOfVideoEncoderInstances, _trt__GetGuaranteedNumberOfVideoEncoderInstancesResponse& trt__GetGuaranteedNumberOfVideoEncoderInstancesResponse);
int __trt__StartMulticastStreaming(_trt__StartMulticastStreaming* trt__StartMulticastStreaming, _trt__StartMulticastStreamingResponse& trt__StartMulticastStreamingResponse);
int __trt__StopMulticastStreaming(_trt__StopMulticastStreaming* trt__StopMulticastStreaming, _trt__StopMulticastStreamingResponse& trt__StopMulticastStreamingResponse);
int __trt__SetSynchronizationPoint(_trt__SetSynchronizationPoint* trt__SetSynchronizationPoint, _trt__SetSynchronizationPointResponse& trt__SetSynchronizationPointResponse);
int __trt__GetVideoSources(_trt__GetVideoSources* trt__GetVideoSources, _trt__GetVideoSourcesResponse& trt__GetVideoSourcesResponse);
int __trt__GetProfile(_trt__GetProfile* trt__GetProfile, _trt__GetProfileResponse& trt__GetProfileResponse);
int __trt__GetProfiles(_trt__GetProfiles* trt__GetProfiles, _trt__GetProfilesResponse& trt__GetProfilesResponse);
int __trt__GetStreamUri(_trt__GetStreamUri* trt__GetStreamUri, _trt__GetStreamUriResponse& trt__GetStreamUriResponse);
int __trt__GetSnapshotUri(_trt__GetSnapshotUri* trt__GetSnapshotUri, _trt__GetSnapshotUriResponse& trt__GetSnapshotUriResponse);
int __tls__GetServiceCapabilities(_tls__GetServiceCapabilities* tls__GetServiceCapabilities, _tls__GetServiceCapabilitiesResponse& tls__GetServiceCapabilitiesResponse);
int __tls__GetLayout(_tls__GetLayout* tls__GetLayout, _tls__GetLayoutResponse& tls__GetLayoutResponse);
int __tls__SetLayout(_tls__SetLayout* tls__SetLayout, _tls__SetLayoutResponse& tls__SetLayoutResponse);
int __tls__GetDisplayOptions(_tls__GetDisplayOptions* tls__GetDisplayOptions, _tls__GetDisplayOptionsResponse& tls__GetDisplayOptionsResponse);
int __tls__GetPaneConfigurations(_tls__GetPaneConfigurations* tls__GetPaneConfigurations, _tls__GetPaneConfigurationsResponse& tls__GetPaneConfigurationsResponse);
int __tls__GetPaneConfiguration(_tls__GetPaneConfiguration* tls__GetPaneConfiguration, _tls__GetPaneConfigurationResponse& tls__GetPaneConfigurationResponse);
int __tls__SetPaneConfigurations(_tls__SetPaneConfigurations* tls__SetPaneConfigurations, _tls__SetPaneConfigurationsResponse& tls__SetPaneConfigurationsResponse);
int __tls__SetPaneConfiguration(_tls__SetPaneConfiguration* tls__SetPaneConfiguration, _tls__SetPaneConfigurationResponse& tls__SetPaneConfigurationResponse);
int __tls__CreatePaneConfiguration(_tls__CreatePaneConfiguration* tls__CreatePaneConfiguration, _tls__CreatePaneConfigurationResponse& tls__CreatePaneConfigurationResponse);
int __tls__DeletePaneConfiguration(_tls__DeletePaneConfiguration* tls__DeletePaneConfiguration, _tls__DeletePaneConfigurationResponse& tls__DeletePaneConfigurationResponse);
int __timg__GetServiceCapabilities(_timg__GetServiceCapabilities* timg__GetServiceCapabilities, _timg__GetServiceCapabilitiesResponse& timg__GetServiceCapabilitiesResponse);
int __timg__GetImagingSettings(_timg__GetImagingSettings* timg__GetImagingSettings, _timg__GetImagingSettingsResponse& timg__GetImagingSettingsResponse);
int __timg__SetImagingSettings(_timg__SetImagingSettings* timg__SetImagingSettings, _timg__SetImagingSettingsResponse& timg__SetImagingSettingsResponse);
int __timg__GetOptions(_timg__GetOptions* timg__GetOptions, _timg__GetOptionsResponse& timg__GetOptionsResponse);
int __timg__Move(_timg__Move* timg__Move, _timg__MoveResponse& timg__MoveResponse);
int __timg__Stop(_timg__Stop* timg__Stop, _timg__StopResponse& timg__StopResponse);
int __timg__GetStatus(_timg__GetStatus* timg__GetStatus, _timg__GetStatusResponse& timg__GetStatusResponse);
int __timg__GetMoveOptions(_timg__GetMoveOptions* timg__GetMoveOptions, _timg__GetMoveOptionsResponse& timg__GetMoveOptionsResponse);
int __tptz__GetServiceCapabilities(_tptz__GetServiceCapabilities* tptz__GetServiceCapabilities, _tptz__GetServiceCapabilitiesResponse& tptz__GetServiceCapabilitiesResponse);
int __tptz__GetConfigurations(_tptz__GetConfigurations* tptz__GetConfigurations, _tptz__GetConfigurationsResponse& tptz__GetConfigurationsResponse);
int __tptz__GetPresets(_tptz__GetPresets* tptz__GetPresets, _tptz__GetPresetsResponse& tptz__GetPresetsResponse);
int __tptz__SetPreset(_tptz__SetPreset* tptz__SetPreset, _tptz__SetPresetResponse& tptz__SetPresetResponse);
int __tptz__RemovePreset(_tptz__RemovePreset* tptz__RemovePreset, _tptz__RemovePresetResponse& tptz__RemovePresetResponse);
int __tptz__GotoPreset(_tptz__GotoPreset* tptz__GotoPreset, _tptz__GotoPresetResponse& tptz__GotoPresetResponse);
int __tptz__GetStatus(_tptz__GetStatus* tptz__GetStatus, _tptz__GetStatusResponse& tptz__GetStatusResponse);
int __tptz__GetConfiguration(_tptz__GetConfiguration* tptz__GetConfiguration, _tptz__GetConfigurationResponse& tptz__GetConfigurationResponse);
int __tptz__GetNodes(_tptz__GetNodes* tptz__GetNodes, _tptz__GetNodesResponse& tptz__GetNodesResponse);
int __tptz__GetNode(_tptz__GetNode* tptz__GetNode, _tptz__GetNodeResponse& tptz__GetNodeResponse);
int __tptz__SetConfiguration(_tptz__SetConfiguration* tptz__SetConfiguration, _tptz__SetConfigurationResponse& tptz__SetConfigurationResponse);
int __tptz__GetConfigurationOptions(_tptz__GetConfigurationOptions* tptz__GetConfigurationOptions, _tptz__GetConfigurationOptionsResponse& tptz__GetConfigurationOptionsResponse);
int __tptz__GotoHomePosition(_tptz__GotoHomePosition* tptz__GotoHomePosition, _tptz__GotoHomePositionResponse& tptz__GotoHomePositionResponse);
int __tptz__SetHomePosition(_tptz__SetHomePosition* tptz__SetHomePosition, _tptz__SetHomePositionResponse& tptz__SetHomePositionResponse);
int __tptz__ContinuousMove(_tptz__ContinuousMove* tptz__ContinuousMove, _tptz__ContinuousMoveResponse& tptz__ContinuousMoveResponse);
int __tptz__RelativeMove(_tptz__RelativeMove* tptz__RelativeMove, _tptz__RelativeMoveResponse& tptz__RelativeMoveResponse);
int __tptz__SendAuxiliaryCommand(_tptz__SendAuxiliaryCommand* tptz__SendAuxiliaryCommand, _tptz__SendAuxiliaryCommandResponse& tptz__SendAuxiliaryCommandResponse);
int __tptz__AbsoluteMove(_tptz__AbsoluteMove* tptz__AbsoluteMove, _tptz__AbsoluteMoveResponse& tptz__AbsoluteMoveResponse);
int __tptz__Stop(_tptz__Stop* tptz__Stop, _tptz__StopResponse& tptz__StopResponse);
int __tptz__GetPresetTours(_tptz__GetPresetTours* tptz__GetPresetTours, _tptz__GetPresetToursResponse& tptz__GetPresetToursResponse);
int __tptz__GetPresetTour(_tptz__GetPresetTour* tptz__GetPresetTour, _tptz__GetPresetTourResponse& tptz__GetPresetTourResponse);
int __tptz__GetPresetTourOptions(_tptz__GetPresetTourOptions* tptz__GetPresetTourOptions, _tptz__GetPresetTourOptionsResponse& tptz__GetPresetTourOptionsResponse);
int __tptz__CreatePresetTour(_tptz__CreatePresetTour* tptz__CreatePresetTour, _tptz__CreatePresetTourResponse& tptz__CreatePresetTourResponse);
int __tptz__ModifyPresetTour(_tptz__ModifyPresetTour* tptz__ModifyPresetTour, _tptz__ModifyPresetTourResponse& tptz__ModifyPresetTourResponse);
int __tptz__OperatePresetTour(_tptz__OperatePresetTour* tptz__OperatePresetTour, _tptz__OperatePresetTourResponse& tptz__OperatePresetTourResponse);
int __tptz__RemovePresetTour(_tptz__RemovePresetTour* tptz__RemovePresetTour, _tptz__RemovePresetTourResponse& tptz__RemovePresetTourResponse);
