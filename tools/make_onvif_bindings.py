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
    ("xmime", "http://www.w3.org/2004/11/xmlmime"),
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

# The operations above whose response element has required children answer with the least the
# official schemas accept, written into the answer as it stands (see onvif/OnvifLiteral.h for
# the fields in braces; a fragment declares the namespaces that are not among those of the
# generated types). They describe a device without audio, network settings, certificates or
# subscriptions, and change nothing.
MINIMAL = {
"tds": {
"GetServices":
 '<tds:Service><tds:Namespace>http://www.onvif.org/ver10/device/wsdl</tds:Namespace><tds:XAddr>{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>0</tt:Minor></tds:Version></tds:Service>'
 '<tds:Service><tds:Namespace>http://www.onvif.org/ver10/media/wsdl</tds:Namespace><tds:XAddr>{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>0</tt:Minor></tds:Version></tds:Service>'
 '<tds:Service><tds:Namespace>http://www.onvif.org/ver10/events/wsdl</tds:Namespace><tds:XAddr>{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>0</tt:Minor></tds:Version></tds:Service>',
"GetServiceCapabilities":
 '<tds:Capabilities><tds:Network IPFilter="true" ZeroConfiguration="false" IPVersion6="false" DynDNS="false"/>'
 '<tds:Security/><tds:System DiscoveryResolve="true" DiscoveryBye="false" RemoteDiscovery="true" SystemBackup="false" SystemLogging="false" FirmwareUpgrade="false"/></tds:Capabilities>',
"SystemReboot": '<tds:Message>Nothing to restart</tds:Message>',
"GetSystemLog": '<tds:SystemLog><tt:String></tt:String></tds:SystemLog>',
"GetSystemSupportInformation": '<tds:SupportInformation><tt:String></tt:String></tds:SupportInformation>',
"GetDiscoveryMode": '<tds:DiscoveryMode>Discoverable</tds:DiscoveryMode>',
"GetRemoteDiscoveryMode": '<tds:RemoteDiscoveryMode>NonDiscoverable</tds:RemoteDiscoveryMode>',
"GetEndpointReference": '<tds:GUID></tds:GUID>',
"GetWsdlUrl": '<tds:WsdlUrl>http://www.onvif.org/</tds:WsdlUrl>',
"GetHostname": '<tds:HostnameInformation><tt:FromDHCP>false</tt:FromDHCP></tds:HostnameInformation>',
"SetHostnameFromDHCP": '<tds:RebootNeeded>false</tds:RebootNeeded>',
"GetDNS": '<tds:DNSInformation><tt:FromDHCP>false</tt:FromDHCP></tds:DNSInformation>',
"GetNTP": '<tds:NTPInformation><tt:FromDHCP>false</tt:FromDHCP></tds:NTPInformation>',
"GetDynamicDNS": '<tds:DynamicDNSInformation><tt:Type>NoUpdate</tt:Type></tds:DynamicDNSInformation>',
"GetNetworkInterfaces": '<tds:NetworkInterfaces token="eth0"><tt:Enabled>true</tt:Enabled></tds:NetworkInterfaces>',
"SetNetworkInterfaces": '<tds:RebootNeeded>false</tds:RebootNeeded>',
"GetNetworkDefaultGateway": '<tds:NetworkGateway/>',
"GetZeroConfiguration": '<tds:ZeroConfiguration><tt:InterfaceToken>eth0</tt:InterfaceToken><tt:Enabled>false</tt:Enabled></tds:ZeroConfiguration>',
"GetIPAddressFilter": '<tds:IPAddressFilter><tt:Type>Deny</tt:Type></tds:IPAddressFilter>',
"GetAccessPolicy": '<tds:PolicyFile><tt:Data></tt:Data></tds:PolicyFile>',
"CreateCertificate": '<tds:NvtCertificate><tt:CertificateID></tt:CertificateID><tt:Certificate><tt:Data></tt:Data></tt:Certificate></tds:NvtCertificate>',
"GetPkcs10Request": '<tds:Pkcs10Request><tt:Data></tt:Data></tds:Pkcs10Request>',
"GetClientCertificateMode": '<tds:Enabled>false</tds:Enabled>',
"GetCertificateInformation": '<tds:CertificateInformation><tt:CertificateID></tt:CertificateID></tds:CertificateInformation>',
"GetDot1XConfiguration": '<tds:Dot1XConfiguration><tt:Dot1XConfigurationToken></tt:Dot1XConfigurationToken><tt:Identity></tt:Identity><tt:EAPMethod>0</tt:EAPMethod></tds:Dot1XConfiguration>',
"GetDot11Capabilities": '<tds:Capabilities><tt:TKIP>false</tt:TKIP><tt:ScanAvailableNetworks>false</tt:ScanAvailableNetworks><tt:MultipleConfiguration>false</tt:MultipleConfiguration><tt:AdHocStationMode>false</tt:AdHocStationMode><tt:WEP>false</tt:WEP></tds:Capabilities>',
"StartFirmwareUpgrade": '<tds:UploadUri>{XADDR}</tds:UploadUri><tds:UploadDelay>PT0S</tds:UploadDelay><tds:ExpectedDownTime>PT0S</tds:ExpectedDownTime>',
"StartSystemRestore": '<tds:UploadUri>{XADDR}</tds:UploadUri><tds:ExpectedDownTime>PT0S</tds:ExpectedDownTime>',
},
"trt": {
"GetServiceCapabilities": '<trt:Capabilities><trt:ProfileCapabilities MaximumNumberOfProfiles="1"/><trt:StreamingCapabilities RTPMulticast="true" RTP_TCP="true" RTP_RTSP_TCP="false"/></trt:Capabilities>',
"CreateProfile": '<trt:Profile token="mobile_h264"><tt:Name>mobile1</tt:Name></trt:Profile>',
"GetVideoSourceConfiguration": '<trt:Configuration token="0"><tt:Name>user0</tt:Name><tt:UseCount>0</tt:UseCount><tt:SourceToken>0</tt:SourceToken><tt:Bounds x="0" y="0" width="{WIDTH}" height="{HEIGHT}"/></trt:Configuration>',
"GetVideoEncoderConfiguration": '<trt:Configuration token="mobile_h264"><tt:Name>mobile h264</tt:Name><tt:UseCount>0</tt:UseCount><tt:Encoding>H264</tt:Encoding><tt:Resolution><tt:Width>{WIDTH}</tt:Width><tt:Height>{HEIGHT}</tt:Height></tt:Resolution><tt:Quality>80</tt:Quality><tt:Multicast><tt:Address><tt:Type>IPv4</tt:Type><tt:IPv4Address>0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>0</tt:Port><tt:TTL>5</tt:TTL><tt:AutoStart>false</tt:AutoStart></tt:Multicast><tt:SessionTimeout>PT60S</tt:SessionTimeout></trt:Configuration>',
"GetAudioSourceConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount><tt:SourceToken></tt:SourceToken></trt:Configuration>',
"GetAudioEncoderConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount><tt:Encoding>G711</tt:Encoding><tt:Bitrate>0</tt:Bitrate><tt:SampleRate>0</tt:SampleRate><tt:Multicast><tt:Address><tt:Type>IPv4</tt:Type><tt:IPv4Address>0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>0</tt:Port><tt:TTL>5</tt:TTL><tt:AutoStart>false</tt:AutoStart></tt:Multicast><tt:SessionTimeout>PT60S</tt:SessionTimeout></trt:Configuration>',
"GetVideoAnalyticsConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount><tt:AnalyticsEngineConfiguration/><tt:RuleEngineConfiguration/></trt:Configuration>',
"GetMetadataConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount><tt:Multicast><tt:Address><tt:Type>IPv4</tt:Type><tt:IPv4Address>0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>0</tt:Port><tt:TTL>5</tt:TTL><tt:AutoStart>false</tt:AutoStart></tt:Multicast><tt:SessionTimeout>PT60S</tt:SessionTimeout></trt:Configuration>',
"GetAudioOutputConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount><tt:OutputToken></tt:OutputToken><tt:OutputLevel>0</tt:OutputLevel></trt:Configuration>',
"GetAudioDecoderConfiguration": '<trt:Configuration token=""><tt:Name></tt:Name><tt:UseCount>0</tt:UseCount></trt:Configuration>',
"GetVideoSourceConfigurationOptions": '<trt:Options><tt:BoundsRange><tt:XRange><tt:Min>0</tt:Min><tt:Max>0</tt:Max></tt:XRange><tt:YRange><tt:Min>0</tt:Min><tt:Max>0</tt:Max></tt:YRange><tt:WidthRange><tt:Min>{WIDTH}</tt:Min><tt:Max>{WIDTH}</tt:Max></tt:WidthRange><tt:HeightRange><tt:Min>{HEIGHT}</tt:Min><tt:Max>{HEIGHT}</tt:Max></tt:HeightRange></tt:BoundsRange><tt:VideoSourceTokensAvailable>0</tt:VideoSourceTokensAvailable></trt:Options>',
"GetVideoEncoderConfigurationOptions": '<trt:Options><tt:QualityRange><tt:Min>80</tt:Min><tt:Max>80</tt:Max></tt:QualityRange></trt:Options>',
"GetAudioSourceConfigurationOptions": '<trt:Options><tt:InputTokensAvailable></tt:InputTokensAvailable></trt:Options>',
"GetAudioEncoderConfigurationOptions": '<trt:Options/>',
"GetMetadataConfigurationOptions": '<trt:Options><tt:PTZStatusFilterOptions><tt:PanTiltStatusSupported>false</tt:PanTiltStatusSupported><tt:ZoomStatusSupported>false</tt:ZoomStatusSupported></tt:PTZStatusFilterOptions></trt:Options>',
"GetAudioOutputConfigurationOptions": '<trt:Options><tt:OutputTokensAvailable></tt:OutputTokensAvailable><tt:OutputLevelRange><tt:Min>0</tt:Min><tt:Max>0</tt:Max></tt:OutputLevelRange></trt:Options>',
"GetAudioDecoderConfigurationOptions": '<trt:Options/>',
"GetGuaranteedNumberOfVideoEncoderInstances": '<trt:TotalNumber>1</trt:TotalNumber><trt:H264>1</trt:H264>',
},
"tev": {
"GetServiceCapabilities": '<tev:Capabilities WSSubscriptionPolicySupport="false" WSPullPointSupport="false" WSPausableSubscriptionManagerInterfaceSupport="false"/>',
"CreatePullPointSubscription": '<tev:SubscriptionReference><wsa5:Address>{XADDR}</wsa5:Address></tev:SubscriptionReference>'
 '<wsnt:CurrentTime xmlns:wsnt="http://docs.oasis-open.org/wsn/b-2">{NOW}</wsnt:CurrentTime>'
 '<wsnt:TerminationTime xmlns:wsnt="http://docs.oasis-open.org/wsn/b-2">{NOW}</wsnt:TerminationTime>',
"GetEventProperties": '<tev:TopicNamespaceLocation>http://www.onvif.org/onvif/ver10/topics/topicns.xml</tev:TopicNamespaceLocation>'
 '<wsnt:FixedTopicSet xmlns:wsnt="http://docs.oasis-open.org/wsn/b-2">true</wsnt:FixedTopicSet>'
 '<wstop:TopicSet xmlns:wstop="http://docs.oasis-open.org/wsn/t-1"/>'
 '<wsnt:TopicExpressionDialect xmlns:wsnt="http://docs.oasis-open.org/wsn/b-2">http://www.onvif.org/ver10/tev/topicExpression/ConcreteSet</wsnt:TopicExpressionDialect>'
 '<tev:MessageContentFilterDialect>http://www.onvif.org/ver10/tev/messageContentFilter/ItemFilter</tev:MessageContentFilterDialect>'
 '<tev:MessageContentSchemaLocation>http://www.onvif.org/onvif/ver10/schema/onvif.xsd</tev:MessageContentSchemaLocation>',
},
"tls": {
"GetServiceCapabilities": '<tls:Capabilities/>',
"GetLayout": '<tls:Layout><tt:PaneLayout><tt:Pane>0</tt:Pane><tt:Area bottom="-1" top="1" right="1" left="-1"/></tt:PaneLayout></tls:Layout>',
"GetDisplayOptions": '<tls:LayoutOptions><tt:PaneLayoutOptions><tt:Area bottom="-1" top="1" right="1" left="-1"/></tt:PaneLayoutOptions></tls:LayoutOptions><tls:CodingCapabilities><tt:VideoDecodingCapabilities/></tls:CodingCapabilities>',
"GetPaneConfigurations": '<tls:PaneConfiguration><tt:Token>0</tt:Token></tls:PaneConfiguration>',
"GetPaneConfiguration": '<tls:PaneConfiguration><tt:Token>0</tt:Token></tls:PaneConfiguration>',
"CreatePaneConfiguration": '<tls:PaneToken>0</tls:PaneToken>',
},
}

# Operations of features the device says it lacks, whose answer cannot be valid without
# inventing data (a backup file, a wireless network): the fault ONVIF names for an action the
# device does not support.
UNSUPPORTED = {("tds", "GetSystemBackup"), ("tds", "GetDot11Status")}


def c_string(text):
    """A C++ string literal of the text, split after a tag once a line has 70 characters."""
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    parts, part = [], ""
    for piece in escaped.replace(">", ">\0").split("\0"):
        if len(part) + len(piece) > 70 and part:
            parts.append(part)
            part = ""
        part += piece
    parts.append(part)
    return "\n        ".join(f'"{part}"' for part in parts if part)


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
            content = "_XML __any; " if op in MINIMAL.get(prefix, {}) else ""
            lines += [f"class _{prefix}__{op} {{ }};",
                      f"class _{prefix}__{op}Response {{ {content}}};"]
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
             "// element, or with the least their schema asks for. Written by",
             "// tools/make_onvif_bindings.py.",
             "#include \"OnvifLiteral.h\"",
             "#include \"soapDeviceService.h\"",
             "#include \"soapDisplayService.h\"",
             "#include \"soapEventService.h\"",
             "#include \"soapMediaService.h\"", ""]
    for prefix, name, _, served in SERVICES:
        if not served:
            continue
        for op in EMPTY[prefix]:
            signature = f"int {name}Service::{op}(_{prefix}__{op}*, _{prefix}__{op}Response&"
            if (prefix, op) in UNSUPPORTED:
                lines += [signature + ") {",
                          "    return soap_receiver_fault_subcode(soap, \"ter:ActionNotSupported\",",
                          "                                       \"Optional Action Not Implemented\", nullptr);"]
            elif op in MINIMAL.get(prefix, {}):
                lines += [signature + " response) {",
                          f"    response.__any = OnvifLiteral(soap, {c_string(MINIMAL[prefix][op])});",
                          "    return SOAP_OK;"]
            else:
                lines += [signature + ") {", "    return SOAP_OK;"]
            lines += ["}", ""]
    return "\n".join(lines)


def namespace_table():
    """The namespace table of the device front. soapcpp2's own table holds only the namespaces
    of its types; answers written as fragments, faults and clients' requests use more."""
    entries = [
        ("SOAP-ENV", "http://www.w3.org/2003/05/soap-envelope",
         "http://schemas.xmlsoap.org/soap/envelope/"),
        ("SOAP-ENC", "http://www.w3.org/2003/05/soap-encoding",
         "http://schemas.xmlsoap.org/soap/encoding/"),
        ("xsi", "http://www.w3.org/2001/XMLSchema-instance", "http://www.w3.org/*/XMLSchema-instance"),
        ("xsd", "http://www.w3.org/2001/XMLSchema", "http://www.w3.org/*/XMLSchema"),
    ]
    entries += [(prefix, namespace, None) for prefix, _, namespace, _ in SERVICES]
    entries += [(prefix, namespace, None) for prefix, namespace in SCHEMAS]
    lines = ["// clang-format off",
             "// Generated: not reformatted. Written by tools/make_onvif_bindings.py.",
             "// The namespace table of the device front: every namespace its answers may use and",
             "// those mainstream clients send, declared on every answer's envelope.",
             "#include \"stdsoap2.h\"", "",
             "SOAP_NMAC struct Namespace namespaces[] = {"]
    for prefix, namespace, pattern in entries:
        match = f'"{pattern}"' if pattern else "nullptr"
        lines.append(f'    {{"{prefix}", "{namespace}", {match}, nullptr}},')
    lines += ["    {nullptr, nullptr, nullptr, nullptr},", "};", ""]
    return "\n".join(lines)


if __name__ == "__main__":
    with open("onvif/onvif.h", "w") as out:
        out.write(header())
    with open("onvif/OnvifEmptyOperations.cpp", "w") as out:
        out.write(empty_operations())
    with open("onvif/OnvifNamespaces.cpp", "w") as out:
        out.write(namespace_table())
