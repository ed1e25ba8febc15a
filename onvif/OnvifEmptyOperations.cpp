// clang-format off
// Generated: not reformatted.
// The operations of the served services that answer SOAP_OK with an empty response
// element, or with the least their schema asks for. Written by
// tools/make_onvif_bindings.py.
#include "OnvifLiteral.h"
#include "soapDeviceService.h"
#include "soapDisplayService.h"
#include "soapEventService.h"
#include "soapMediaService.h"

int DeviceService::GetServices(_tds__GetServices*, _tds__GetServicesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Service><tds:Namespace>"
        "http://www.onvif.org/ver10/device/wsdl</tds:Namespace><tds:XAddr>"
        "{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>"
        "0</tt:Minor></tds:Version></tds:Service><tds:Service><tds:Namespace>"
        "http://www.onvif.org/ver10/media/wsdl</tds:Namespace><tds:XAddr>"
        "{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>"
        "0</tt:Minor></tds:Version></tds:Service><tds:Service><tds:Namespace>"
        "http://www.onvif.org/ver10/events/wsdl</tds:Namespace><tds:XAddr>"
        "{XADDR}</tds:XAddr><tds:Version><tt:Major>1</tt:Major><tt:Minor>"
        "0</tt:Minor></tds:Version></tds:Service>");
    return SOAP_OK;
}

int DeviceService::GetServiceCapabilities(_tds__GetServiceCapabilities*, _tds__GetServiceCapabilitiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Capabilities>"
        "<tds:Network IPFilter=\"true\" ZeroConfiguration=\"false\" IPVersion6=\"false\" DynDNS=\"false\"/>"
        "<tds:Security/>"
        "<tds:System DiscoveryResolve=\"true\" DiscoveryBye=\"false\" RemoteDiscovery=\"true\" SystemBackup=\"false\" SystemLogging=\"false\" FirmwareUpgrade=\"false\"/>"
        "</tds:Capabilities>");
    return SOAP_OK;
}

int DeviceService::SetSystemDateAndTime(_tds__SetSystemDateAndTime*, _tds__SetSystemDateAndTimeResponse&) {
    return SOAP_OK;
}

int DeviceService::SetSystemFactoryDefault(_tds__SetSystemFactoryDefault*, _tds__SetSystemFactoryDefaultResponse&) {
    return SOAP_OK;
}

int DeviceService::UpgradeSystemFirmware(_tds__UpgradeSystemFirmware*, _tds__UpgradeSystemFirmwareResponse&) {
    return SOAP_OK;
}

int DeviceService::SystemReboot(_tds__SystemReboot*, _tds__SystemRebootResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Message>Nothing to restart</tds:Message>");
    return SOAP_OK;
}

int DeviceService::RestoreSystem(_tds__RestoreSystem*, _tds__RestoreSystemResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemBackup(_tds__GetSystemBackup*, _tds__GetSystemBackupResponse&) {
    return soap_receiver_fault_subcode(soap, "ter:ActionNotSupported",
                                       "Optional Action Not Implemented", nullptr);
}

int DeviceService::GetSystemLog(_tds__GetSystemLog*, _tds__GetSystemLogResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:SystemLog><tt:String></tt:String></tds:SystemLog>");
    return SOAP_OK;
}

int DeviceService::GetSystemSupportInformation(_tds__GetSystemSupportInformation*, _tds__GetSystemSupportInformationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:SupportInformation><tt:String></tt:String>"
        "</tds:SupportInformation>");
    return SOAP_OK;
}

int DeviceService::SetScopes(_tds__SetScopes*, _tds__SetScopesResponse&) {
    return SOAP_OK;
}

int DeviceService::AddScopes(_tds__AddScopes*, _tds__AddScopesResponse&) {
    return SOAP_OK;
}

int DeviceService::RemoveScopes(_tds__RemoveScopes*, _tds__RemoveScopesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDiscoveryMode(_tds__GetDiscoveryMode*, _tds__GetDiscoveryModeResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:DiscoveryMode>Discoverable</tds:DiscoveryMode>");
    return SOAP_OK;
}

int DeviceService::SetDiscoveryMode(_tds__SetDiscoveryMode*, _tds__SetDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::GetRemoteDiscoveryMode(_tds__GetRemoteDiscoveryMode*, _tds__GetRemoteDiscoveryModeResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:RemoteDiscoveryMode>NonDiscoverable</tds:RemoteDiscoveryMode>");
    return SOAP_OK;
}

int DeviceService::SetRemoteDiscoveryMode(_tds__SetRemoteDiscoveryMode*, _tds__SetRemoteDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDPAddresses(_tds__GetDPAddresses*, _tds__GetDPAddressesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetEndpointReference(_tds__GetEndpointReference*, _tds__GetEndpointReferenceResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:GUID></tds:GUID>");
    return SOAP_OK;
}

int DeviceService::GetRemoteUser(_tds__GetRemoteUser*, _tds__GetRemoteUserResponse&) {
    return SOAP_OK;
}

int DeviceService::SetRemoteUser(_tds__SetRemoteUser*, _tds__SetRemoteUserResponse&) {
    return SOAP_OK;
}

int DeviceService::GetUsers(_tds__GetUsers*, _tds__GetUsersResponse&) {
    return SOAP_OK;
}

int DeviceService::CreateUsers(_tds__CreateUsers*, _tds__CreateUsersResponse&) {
    return SOAP_OK;
}

int DeviceService::DeleteUsers(_tds__DeleteUsers*, _tds__DeleteUsersResponse&) {
    return SOAP_OK;
}

int DeviceService::SetUser(_tds__SetUser*, _tds__SetUserResponse&) {
    return SOAP_OK;
}

int DeviceService::GetWsdlUrl(_tds__GetWsdlUrl*, _tds__GetWsdlUrlResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:WsdlUrl>http://www.onvif.org/</tds:WsdlUrl>");
    return SOAP_OK;
}

int DeviceService::SetDPAddresses(_tds__SetDPAddresses*, _tds__SetDPAddressesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetHostname(_tds__GetHostname*, _tds__GetHostnameResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:HostnameInformation><tt:FromDHCP>false</tt:FromDHCP>"
        "</tds:HostnameInformation>");
    return SOAP_OK;
}

int DeviceService::SetHostname(_tds__SetHostname*, _tds__SetHostnameResponse&) {
    return SOAP_OK;
}

int DeviceService::SetHostnameFromDHCP(_tds__SetHostnameFromDHCP*, _tds__SetHostnameFromDHCPResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:RebootNeeded>false</tds:RebootNeeded>");
    return SOAP_OK;
}

int DeviceService::GetDNS(_tds__GetDNS*, _tds__GetDNSResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:DNSInformation><tt:FromDHCP>false</tt:FromDHCP>"
        "</tds:DNSInformation>");
    return SOAP_OK;
}

int DeviceService::SetDNS(_tds__SetDNS*, _tds__SetDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNTP(_tds__GetNTP*, _tds__GetNTPResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:NTPInformation><tt:FromDHCP>false</tt:FromDHCP>"
        "</tds:NTPInformation>");
    return SOAP_OK;
}

int DeviceService::SetNTP(_tds__SetNTP*, _tds__SetNTPResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDynamicDNS(_tds__GetDynamicDNS*, _tds__GetDynamicDNSResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:DynamicDNSInformation><tt:Type>NoUpdate</tt:Type>"
        "</tds:DynamicDNSInformation>");
    return SOAP_OK;
}

int DeviceService::SetDynamicDNS(_tds__SetDynamicDNS*, _tds__SetDynamicDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNetworkInterfaces(_tds__GetNetworkInterfaces*, _tds__GetNetworkInterfacesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:NetworkInterfaces token=\"eth0\"><tt:Enabled>true</tt:Enabled>"
        "</tds:NetworkInterfaces>");
    return SOAP_OK;
}

int DeviceService::SetNetworkInterfaces(_tds__SetNetworkInterfaces*, _tds__SetNetworkInterfacesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:RebootNeeded>false</tds:RebootNeeded>");
    return SOAP_OK;
}

int DeviceService::GetNetworkProtocols(_tds__GetNetworkProtocols*, _tds__GetNetworkProtocolsResponse&) {
    return SOAP_OK;
}

int DeviceService::SetNetworkProtocols(_tds__SetNetworkProtocols*, _tds__SetNetworkProtocolsResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNetworkDefaultGateway(_tds__GetNetworkDefaultGateway*, _tds__GetNetworkDefaultGatewayResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:NetworkGateway/>");
    return SOAP_OK;
}

int DeviceService::SetNetworkDefaultGateway(_tds__SetNetworkDefaultGateway*, _tds__SetNetworkDefaultGatewayResponse&) {
    return SOAP_OK;
}

int DeviceService::GetZeroConfiguration(_tds__GetZeroConfiguration*, _tds__GetZeroConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:ZeroConfiguration><tt:InterfaceToken>eth0</tt:InterfaceToken>"
        "<tt:Enabled>false</tt:Enabled></tds:ZeroConfiguration>");
    return SOAP_OK;
}

int DeviceService::SetZeroConfiguration(_tds__SetZeroConfiguration*, _tds__SetZeroConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetIPAddressFilter(_tds__GetIPAddressFilter*, _tds__GetIPAddressFilterResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:IPAddressFilter><tt:Type>Deny</tt:Type></tds:IPAddressFilter>");
    return SOAP_OK;
}

int DeviceService::SetIPAddressFilter(_tds__SetIPAddressFilter*, _tds__SetIPAddressFilterResponse&) {
    return SOAP_OK;
}

int DeviceService::AddIPAddressFilter(_tds__AddIPAddressFilter*, _tds__AddIPAddressFilterResponse&) {
    return SOAP_OK;
}

int DeviceService::RemoveIPAddressFilter(_tds__RemoveIPAddressFilter*, _tds__RemoveIPAddressFilterResponse&) {
    return SOAP_OK;
}

int DeviceService::GetAccessPolicy(_tds__GetAccessPolicy*, _tds__GetAccessPolicyResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:PolicyFile><tt:Data></tt:Data></tds:PolicyFile>");
    return SOAP_OK;
}

int DeviceService::SetAccessPolicy(_tds__SetAccessPolicy*, _tds__SetAccessPolicyResponse&) {
    return SOAP_OK;
}

int DeviceService::CreateCertificate(_tds__CreateCertificate*, _tds__CreateCertificateResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:NvtCertificate><tt:CertificateID></tt:CertificateID>"
        "<tt:Certificate><tt:Data></tt:Data></tt:Certificate>"
        "</tds:NvtCertificate>");
    return SOAP_OK;
}

int DeviceService::GetCertificates(_tds__GetCertificates*, _tds__GetCertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetCertificatesStatus(_tds__GetCertificatesStatus*, _tds__GetCertificatesStatusResponse&) {
    return SOAP_OK;
}

int DeviceService::SetCertificatesStatus(_tds__SetCertificatesStatus*, _tds__SetCertificatesStatusResponse&) {
    return SOAP_OK;
}

int DeviceService::DeleteCertificates(_tds__DeleteCertificates*, _tds__DeleteCertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetPkcs10Request(_tds__GetPkcs10Request*, _tds__GetPkcs10RequestResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Pkcs10Request><tt:Data></tt:Data></tds:Pkcs10Request>");
    return SOAP_OK;
}

int DeviceService::LoadCertificates(_tds__LoadCertificates*, _tds__LoadCertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetClientCertificateMode(_tds__GetClientCertificateMode*, _tds__GetClientCertificateModeResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Enabled>false</tds:Enabled>");
    return SOAP_OK;
}

int DeviceService::SetClientCertificateMode(_tds__SetClientCertificateMode*, _tds__SetClientCertificateModeResponse&) {
    return SOAP_OK;
}

int DeviceService::GetRelayOutputs(_tds__GetRelayOutputs*, _tds__GetRelayOutputsResponse&) {
    return SOAP_OK;
}

int DeviceService::SetRelayOutputSettings(_tds__SetRelayOutputSettings*, _tds__SetRelayOutputSettingsResponse&) {
    return SOAP_OK;
}

int DeviceService::SetRelayOutputState(_tds__SetRelayOutputState*, _tds__SetRelayOutputStateResponse&) {
    return SOAP_OK;
}

int DeviceService::SendAuxiliaryCommand(_tds__SendAuxiliaryCommand*, _tds__SendAuxiliaryCommandResponse&) {
    return SOAP_OK;
}

int DeviceService::GetCACertificates(_tds__GetCACertificates*, _tds__GetCACertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::LoadCertificateWithPrivateKey(_tds__LoadCertificateWithPrivateKey*, _tds__LoadCertificateWithPrivateKeyResponse&) {
    return SOAP_OK;
}

int DeviceService::GetCertificateInformation(_tds__GetCertificateInformation*, _tds__GetCertificateInformationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:CertificateInformation><tt:CertificateID></tt:CertificateID>"
        "</tds:CertificateInformation>");
    return SOAP_OK;
}

int DeviceService::LoadCACertificates(_tds__LoadCACertificates*, _tds__LoadCACertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::CreateDot1XConfiguration(_tds__CreateDot1XConfiguration*, _tds__CreateDot1XConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::SetDot1XConfiguration(_tds__SetDot1XConfiguration*, _tds__SetDot1XConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDot1XConfiguration(_tds__GetDot1XConfiguration*, _tds__GetDot1XConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Dot1XConfiguration><tt:Dot1XConfigurationToken>"
        "</tt:Dot1XConfigurationToken><tt:Identity></tt:Identity><tt:EAPMethod>"
        "0</tt:EAPMethod></tds:Dot1XConfiguration>");
    return SOAP_OK;
}

int DeviceService::GetDot1XConfigurations(_tds__GetDot1XConfigurations*, _tds__GetDot1XConfigurationsResponse&) {
    return SOAP_OK;
}

int DeviceService::DeleteDot1XConfiguration(_tds__DeleteDot1XConfiguration*, _tds__DeleteDot1XConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDot11Capabilities(_tds__GetDot11Capabilities*, _tds__GetDot11CapabilitiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:Capabilities><tt:TKIP>false</tt:TKIP><tt:ScanAvailableNetworks>"
        "false</tt:ScanAvailableNetworks><tt:MultipleConfiguration>"
        "false</tt:MultipleConfiguration><tt:AdHocStationMode>"
        "false</tt:AdHocStationMode><tt:WEP>false</tt:WEP></tds:Capabilities>");
    return SOAP_OK;
}

int DeviceService::GetDot11Status(_tds__GetDot11Status*, _tds__GetDot11StatusResponse&) {
    return soap_receiver_fault_subcode(soap, "ter:ActionNotSupported",
                                       "Optional Action Not Implemented", nullptr);
}

int DeviceService::ScanAvailableDot11Networks(_tds__ScanAvailableDot11Networks*, _tds__ScanAvailableDot11NetworksResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemUris(_tds__GetSystemUris*, _tds__GetSystemUrisResponse&) {
    return SOAP_OK;
}

int DeviceService::StartFirmwareUpgrade(_tds__StartFirmwareUpgrade*, _tds__StartFirmwareUpgradeResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:UploadUri>{XADDR}</tds:UploadUri><tds:UploadDelay>"
        "PT0S</tds:UploadDelay><tds:ExpectedDownTime>"
        "PT0S</tds:ExpectedDownTime>");
    return SOAP_OK;
}

int DeviceService::StartSystemRestore(_tds__StartSystemRestore*, _tds__StartSystemRestoreResponse& response) {
    response.__any = OnvifLiteral(soap, "<tds:UploadUri>{XADDR}</tds:UploadUri><tds:ExpectedDownTime>"
        "PT0S</tds:ExpectedDownTime>");
    return SOAP_OK;
}

int EventService::GetServiceCapabilities(_tev__GetServiceCapabilities*, _tev__GetServiceCapabilitiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tev:Capabilities WSSubscriptionPolicySupport=\"false\" WSPullPointSupport=\"false\" WSPausableSubscriptionManagerInterfaceSupport=\"false\"/>");
    return SOAP_OK;
}

int EventService::CreatePullPointSubscription(_tev__CreatePullPointSubscription*, _tev__CreatePullPointSubscriptionResponse& response) {
    response.__any = OnvifLiteral(soap, "<tev:SubscriptionReference><wsa5:Address>{XADDR}</wsa5:Address>"
        "</tev:SubscriptionReference>"
        "<wsnt:CurrentTime xmlns:wsnt=\"http://docs.oasis-open.org/wsn/b-2\">"
        "{NOW}</wsnt:CurrentTime>"
        "<wsnt:TerminationTime xmlns:wsnt=\"http://docs.oasis-open.org/wsn/b-2\">"
        "{NOW}</wsnt:TerminationTime>");
    return SOAP_OK;
}

int EventService::GetEventProperties(_tev__GetEventProperties*, _tev__GetEventPropertiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tev:TopicNamespaceLocation>"
        "http://www.onvif.org/onvif/ver10/topics/topicns.xml</tev:TopicNamespaceLocation>"
        "<wsnt:FixedTopicSet xmlns:wsnt=\"http://docs.oasis-open.org/wsn/b-2\">"
        "true</wsnt:FixedTopicSet>"
        "<wstop:TopicSet xmlns:wstop=\"http://docs.oasis-open.org/wsn/t-1\"/>"
        "<wsnt:TopicExpressionDialect xmlns:wsnt=\"http://docs.oasis-open.org/wsn/b-2\">"
        "http://www.onvif.org/ver10/tev/topicExpression/ConcreteSet</wsnt:TopicExpressionDialect>"
        "<tev:MessageContentFilterDialect>"
        "http://www.onvif.org/ver10/tev/messageContentFilter/ItemFilter</tev:MessageContentFilterDialect>"
        "<tev:MessageContentSchemaLocation>"
        "http://www.onvif.org/onvif/ver10/schema/onvif.xsd</tev:MessageContentSchemaLocation>");
    return SOAP_OK;
}

int MediaService::GetServiceCapabilities(_trt__GetServiceCapabilities*, _trt__GetServiceCapabilitiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Capabilities>"
        "<trt:ProfileCapabilities MaximumNumberOfProfiles=\"1\"/>"
        "<trt:StreamingCapabilities RTPMulticast=\"true\" RTP_TCP=\"true\" RTP_RTSP_TCP=\"false\"/>"
        "</trt:Capabilities>");
    return SOAP_OK;
}

int MediaService::GetAudioSources(_trt__GetAudioSources*, _trt__GetAudioSourcesResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioOutputs(_trt__GetAudioOutputs*, _trt__GetAudioOutputsResponse&) {
    return SOAP_OK;
}

int MediaService::CreateProfile(_trt__CreateProfile*, _trt__CreateProfileResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Profile token=\"mobile_h264\"><tt:Name>mobile1</tt:Name>"
        "</trt:Profile>");
    return SOAP_OK;
}

int MediaService::AddVideoEncoderConfiguration(_trt__AddVideoEncoderConfiguration*, _trt__AddVideoEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddVideoSourceConfiguration(_trt__AddVideoSourceConfiguration*, _trt__AddVideoSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddAudioEncoderConfiguration(_trt__AddAudioEncoderConfiguration*, _trt__AddAudioEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddAudioSourceConfiguration(_trt__AddAudioSourceConfiguration*, _trt__AddAudioSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddPTZConfiguration(_trt__AddPTZConfiguration*, _trt__AddPTZConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddVideoAnalyticsConfiguration(_trt__AddVideoAnalyticsConfiguration*, _trt__AddVideoAnalyticsConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddMetadataConfiguration(_trt__AddMetadataConfiguration*, _trt__AddMetadataConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddAudioOutputConfiguration(_trt__AddAudioOutputConfiguration*, _trt__AddAudioOutputConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::AddAudioDecoderConfiguration(_trt__AddAudioDecoderConfiguration*, _trt__AddAudioDecoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveVideoEncoderConfiguration(_trt__RemoveVideoEncoderConfiguration*, _trt__RemoveVideoEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveVideoSourceConfiguration(_trt__RemoveVideoSourceConfiguration*, _trt__RemoveVideoSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveAudioEncoderConfiguration(_trt__RemoveAudioEncoderConfiguration*, _trt__RemoveAudioEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveAudioSourceConfiguration(_trt__RemoveAudioSourceConfiguration*, _trt__RemoveAudioSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemovePTZConfiguration(_trt__RemovePTZConfiguration*, _trt__RemovePTZConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveVideoAnalyticsConfiguration(_trt__RemoveVideoAnalyticsConfiguration*, _trt__RemoveVideoAnalyticsConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveMetadataConfiguration(_trt__RemoveMetadataConfiguration*, _trt__RemoveMetadataConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveAudioOutputConfiguration(_trt__RemoveAudioOutputConfiguration*, _trt__RemoveAudioOutputConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::RemoveAudioDecoderConfiguration(_trt__RemoveAudioDecoderConfiguration*, _trt__RemoveAudioDecoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::DeleteProfile(_trt__DeleteProfile*, _trt__DeleteProfileResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoSourceConfigurations(_trt__GetVideoSourceConfigurations*, _trt__GetVideoSourceConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoEncoderConfigurations(_trt__GetVideoEncoderConfigurations*, _trt__GetVideoEncoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioSourceConfigurations(_trt__GetAudioSourceConfigurations*, _trt__GetAudioSourceConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioEncoderConfigurations(_trt__GetAudioEncoderConfigurations*, _trt__GetAudioEncoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoAnalyticsConfigurations(_trt__GetVideoAnalyticsConfigurations*, _trt__GetVideoAnalyticsConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetMetadataConfigurations(_trt__GetMetadataConfigurations*, _trt__GetMetadataConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioOutputConfigurations(_trt__GetAudioOutputConfigurations*, _trt__GetAudioOutputConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioDecoderConfigurations(_trt__GetAudioDecoderConfigurations*, _trt__GetAudioDecoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoSourceConfiguration(_trt__GetVideoSourceConfiguration*, _trt__GetVideoSourceConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"0\"><tt:Name>user0</tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:SourceToken>0</tt:SourceToken>"
        "<tt:Bounds x=\"0\" y=\"0\" width=\"{WIDTH}\" height=\"{HEIGHT}\"/>"
        "</trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetVideoEncoderConfiguration(_trt__GetVideoEncoderConfiguration*, _trt__GetVideoEncoderConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"mobile_h264\"><tt:Name>"
        "mobile h264</tt:Name><tt:UseCount>0</tt:UseCount><tt:Encoding>"
        "H264</tt:Encoding><tt:Resolution><tt:Width>{WIDTH}</tt:Width>"
        "<tt:Height>{HEIGHT}</tt:Height></tt:Resolution><tt:Quality>"
        "80</tt:Quality><tt:Multicast><tt:Address><tt:Type>IPv4</tt:Type>"
        "<tt:IPv4Address>0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>"
        "0</tt:Port><tt:TTL>5</tt:TTL><tt:AutoStart>false</tt:AutoStart>"
        "</tt:Multicast><tt:SessionTimeout>PT60S</tt:SessionTimeout>"
        "</trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetAudioSourceConfiguration(_trt__GetAudioSourceConfiguration*, _trt__GetAudioSourceConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:SourceToken></tt:SourceToken></trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetAudioEncoderConfiguration(_trt__GetAudioEncoderConfiguration*, _trt__GetAudioEncoderConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:Encoding>G711</tt:Encoding><tt:Bitrate>"
        "0</tt:Bitrate><tt:SampleRate>0</tt:SampleRate><tt:Multicast>"
        "<tt:Address><tt:Type>IPv4</tt:Type><tt:IPv4Address>"
        "0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>0</tt:Port><tt:TTL>"
        "5</tt:TTL><tt:AutoStart>false</tt:AutoStart></tt:Multicast>"
        "<tt:SessionTimeout>PT60S</tt:SessionTimeout></trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetVideoAnalyticsConfiguration(_trt__GetVideoAnalyticsConfiguration*, _trt__GetVideoAnalyticsConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:AnalyticsEngineConfiguration/>"
        "<tt:RuleEngineConfiguration/></trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetMetadataConfiguration(_trt__GetMetadataConfiguration*, _trt__GetMetadataConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:Multicast><tt:Address><tt:Type>IPv4</tt:Type>"
        "<tt:IPv4Address>0.0.0.0</tt:IPv4Address></tt:Address><tt:Port>"
        "0</tt:Port><tt:TTL>5</tt:TTL><tt:AutoStart>false</tt:AutoStart>"
        "</tt:Multicast><tt:SessionTimeout>PT60S</tt:SessionTimeout>"
        "</trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetAudioOutputConfiguration(_trt__GetAudioOutputConfiguration*, _trt__GetAudioOutputConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount><tt:OutputToken></tt:OutputToken><tt:OutputLevel>"
        "0</tt:OutputLevel></trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetAudioDecoderConfiguration(_trt__GetAudioDecoderConfiguration*, _trt__GetAudioDecoderConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Configuration token=\"\"><tt:Name></tt:Name><tt:UseCount>"
        "0</tt:UseCount></trt:Configuration>");
    return SOAP_OK;
}

int MediaService::GetCompatibleVideoEncoderConfigurations(_trt__GetCompatibleVideoEncoderConfigurations*, _trt__GetCompatibleVideoEncoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleVideoSourceConfigurations(_trt__GetCompatibleVideoSourceConfigurations*, _trt__GetCompatibleVideoSourceConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleAudioEncoderConfigurations(_trt__GetCompatibleAudioEncoderConfigurations*, _trt__GetCompatibleAudioEncoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleAudioSourceConfigurations(_trt__GetCompatibleAudioSourceConfigurations*, _trt__GetCompatibleAudioSourceConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleVideoAnalyticsConfigurations(_trt__GetCompatibleVideoAnalyticsConfigurations*, _trt__GetCompatibleVideoAnalyticsConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleMetadataConfigurations(_trt__GetCompatibleMetadataConfigurations*, _trt__GetCompatibleMetadataConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleAudioOutputConfigurations(_trt__GetCompatibleAudioOutputConfigurations*, _trt__GetCompatibleAudioOutputConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::GetCompatibleAudioDecoderConfigurations(_trt__GetCompatibleAudioDecoderConfigurations*, _trt__GetCompatibleAudioDecoderConfigurationsResponse&) {
    return SOAP_OK;
}

int MediaService::SetVideoSourceConfiguration(_trt__SetVideoSourceConfiguration*, _trt__SetVideoSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetVideoEncoderConfiguration(_trt__SetVideoEncoderConfiguration*, _trt__SetVideoEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetAudioSourceConfiguration(_trt__SetAudioSourceConfiguration*, _trt__SetAudioSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetAudioEncoderConfiguration(_trt__SetAudioEncoderConfiguration*, _trt__SetAudioEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetVideoAnalyticsConfiguration(_trt__SetVideoAnalyticsConfiguration*, _trt__SetVideoAnalyticsConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetMetadataConfiguration(_trt__SetMetadataConfiguration*, _trt__SetMetadataConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetAudioOutputConfiguration(_trt__SetAudioOutputConfiguration*, _trt__SetAudioOutputConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::SetAudioDecoderConfiguration(_trt__SetAudioDecoderConfiguration*, _trt__SetAudioDecoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoSourceConfigurationOptions(_trt__GetVideoSourceConfigurationOptions*, _trt__GetVideoSourceConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options><tt:BoundsRange><tt:XRange><tt:Min>0</tt:Min><tt:Max>"
        "0</tt:Max></tt:XRange><tt:YRange><tt:Min>0</tt:Min><tt:Max>0</tt:Max>"
        "</tt:YRange><tt:WidthRange><tt:Min>{WIDTH}</tt:Min><tt:Max>"
        "{WIDTH}</tt:Max></tt:WidthRange><tt:HeightRange><tt:Min>"
        "{HEIGHT}</tt:Min><tt:Max>{HEIGHT}</tt:Max></tt:HeightRange>"
        "</tt:BoundsRange><tt:VideoSourceTokensAvailable>"
        "0</tt:VideoSourceTokensAvailable></trt:Options>");
    return SOAP_OK;
}

int MediaService::GetVideoEncoderConfigurationOptions(_trt__GetVideoEncoderConfigurationOptions*, _trt__GetVideoEncoderConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options><tt:QualityRange><tt:Min>80</tt:Min><tt:Max>80</tt:Max>"
        "</tt:QualityRange></trt:Options>");
    return SOAP_OK;
}

int MediaService::GetAudioSourceConfigurationOptions(_trt__GetAudioSourceConfigurationOptions*, _trt__GetAudioSourceConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options><tt:InputTokensAvailable></tt:InputTokensAvailable>"
        "</trt:Options>");
    return SOAP_OK;
}

int MediaService::GetAudioEncoderConfigurationOptions(_trt__GetAudioEncoderConfigurationOptions*, _trt__GetAudioEncoderConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options/>");
    return SOAP_OK;
}

int MediaService::GetMetadataConfigurationOptions(_trt__GetMetadataConfigurationOptions*, _trt__GetMetadataConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options><tt:PTZStatusFilterOptions><tt:PanTiltStatusSupported>"
        "false</tt:PanTiltStatusSupported><tt:ZoomStatusSupported>"
        "false</tt:ZoomStatusSupported></tt:PTZStatusFilterOptions>"
        "</trt:Options>");
    return SOAP_OK;
}

int MediaService::GetAudioOutputConfigurationOptions(_trt__GetAudioOutputConfigurationOptions*, _trt__GetAudioOutputConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options><tt:OutputTokensAvailable></tt:OutputTokensAvailable>"
        "<tt:OutputLevelRange><tt:Min>0</tt:Min><tt:Max>0</tt:Max>"
        "</tt:OutputLevelRange></trt:Options>");
    return SOAP_OK;
}

int MediaService::GetAudioDecoderConfigurationOptions(_trt__GetAudioDecoderConfigurationOptions*, _trt__GetAudioDecoderConfigurationOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:Options/>");
    return SOAP_OK;
}

int MediaService::GetGuaranteedNumberOfVideoEncoderInstances(_trt__GetGuaranteedNumberOfVideoEncoderInstances*, _trt__GetGuaranteedNumberOfVideoEncoderInstancesResponse& response) {
    response.__any = OnvifLiteral(soap, "<trt:TotalNumber>1</trt:TotalNumber><trt:H264>1</trt:H264>");
    return SOAP_OK;
}

int MediaService::StartMulticastStreaming(_trt__StartMulticastStreaming*, _trt__StartMulticastStreamingResponse&) {
    return SOAP_OK;
}

int MediaService::StopMulticastStreaming(_trt__StopMulticastStreaming*, _trt__StopMulticastStreamingResponse&) {
    return SOAP_OK;
}

int MediaService::SetSynchronizationPoint(_trt__SetSynchronizationPoint*, _trt__SetSynchronizationPointResponse&) {
    return SOAP_OK;
}

int DisplayService::GetServiceCapabilities(_tls__GetServiceCapabilities*, _tls__GetServiceCapabilitiesResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:Capabilities/>");
    return SOAP_OK;
}

int DisplayService::GetLayout(_tls__GetLayout*, _tls__GetLayoutResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:Layout><tt:PaneLayout><tt:Pane>0</tt:Pane>"
        "<tt:Area bottom=\"-1\" top=\"1\" right=\"1\" left=\"-1\"/>"
        "</tt:PaneLayout></tls:Layout>");
    return SOAP_OK;
}

int DisplayService::SetLayout(_tls__SetLayout*, _tls__SetLayoutResponse&) {
    return SOAP_OK;
}

int DisplayService::GetDisplayOptions(_tls__GetDisplayOptions*, _tls__GetDisplayOptionsResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:LayoutOptions><tt:PaneLayoutOptions>"
        "<tt:Area bottom=\"-1\" top=\"1\" right=\"1\" left=\"-1\"/>"
        "</tt:PaneLayoutOptions></tls:LayoutOptions><tls:CodingCapabilities>"
        "<tt:VideoDecodingCapabilities/></tls:CodingCapabilities>");
    return SOAP_OK;
}

int DisplayService::GetPaneConfigurations(_tls__GetPaneConfigurations*, _tls__GetPaneConfigurationsResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:PaneConfiguration><tt:Token>0</tt:Token></tls:PaneConfiguration>");
    return SOAP_OK;
}

int DisplayService::GetPaneConfiguration(_tls__GetPaneConfiguration*, _tls__GetPaneConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:PaneConfiguration><tt:Token>0</tt:Token></tls:PaneConfiguration>");
    return SOAP_OK;
}

int DisplayService::SetPaneConfigurations(_tls__SetPaneConfigurations*, _tls__SetPaneConfigurationsResponse&) {
    return SOAP_OK;
}

int DisplayService::SetPaneConfiguration(_tls__SetPaneConfiguration*, _tls__SetPaneConfigurationResponse&) {
    return SOAP_OK;
}

int DisplayService::CreatePaneConfiguration(_tls__CreatePaneConfiguration*, _tls__CreatePaneConfigurationResponse& response) {
    response.__any = OnvifLiteral(soap, "<tls:PaneToken>0</tls:PaneToken>");
    return SOAP_OK;
}

int DisplayService::DeletePaneConfiguration(_tls__DeletePaneConfiguration*, _tls__DeletePaneConfigurationResponse&) {
    return SOAP_OK;
}
