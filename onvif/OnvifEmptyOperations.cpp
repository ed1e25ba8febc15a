// clang-format off
// Generated: not reformatted.
// The operations of the served services that answer SOAP_OK with an empty response
// element. Written by tools/make_onvif_bindings.py.
#include "soapDeviceService.h"
#include "soapDisplayService.h"
#include "soapEventService.h"
#include "soapMediaService.h"

int DeviceService::GetServices(_tds__GetServices*, _tds__GetServicesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetServiceCapabilities(_tds__GetServiceCapabilities*, _tds__GetServiceCapabilitiesResponse&) {
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

int DeviceService::SystemReboot(_tds__SystemReboot*, _tds__SystemRebootResponse&) {
    return SOAP_OK;
}

int DeviceService::RestoreSystem(_tds__RestoreSystem*, _tds__RestoreSystemResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemBackup(_tds__GetSystemBackup*, _tds__GetSystemBackupResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemLog(_tds__GetSystemLog*, _tds__GetSystemLogResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemSupportInformation(_tds__GetSystemSupportInformation*, _tds__GetSystemSupportInformationResponse&) {
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

int DeviceService::GetDiscoveryMode(_tds__GetDiscoveryMode*, _tds__GetDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::SetDiscoveryMode(_tds__SetDiscoveryMode*, _tds__SetDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::GetRemoteDiscoveryMode(_tds__GetRemoteDiscoveryMode*, _tds__GetRemoteDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::SetRemoteDiscoveryMode(_tds__SetRemoteDiscoveryMode*, _tds__SetRemoteDiscoveryModeResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDPAddresses(_tds__GetDPAddresses*, _tds__GetDPAddressesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetEndpointReference(_tds__GetEndpointReference*, _tds__GetEndpointReferenceResponse&) {
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

int DeviceService::GetWsdlUrl(_tds__GetWsdlUrl*, _tds__GetWsdlUrlResponse&) {
    return SOAP_OK;
}

int DeviceService::SetDPAddresses(_tds__SetDPAddresses*, _tds__SetDPAddressesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetHostname(_tds__GetHostname*, _tds__GetHostnameResponse&) {
    return SOAP_OK;
}

int DeviceService::SetHostname(_tds__SetHostname*, _tds__SetHostnameResponse&) {
    return SOAP_OK;
}

int DeviceService::SetHostnameFromDHCP(_tds__SetHostnameFromDHCP*, _tds__SetHostnameFromDHCPResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDNS(_tds__GetDNS*, _tds__GetDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::SetDNS(_tds__SetDNS*, _tds__SetDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNTP(_tds__GetNTP*, _tds__GetNTPResponse&) {
    return SOAP_OK;
}

int DeviceService::SetNTP(_tds__SetNTP*, _tds__SetNTPResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDynamicDNS(_tds__GetDynamicDNS*, _tds__GetDynamicDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::SetDynamicDNS(_tds__SetDynamicDNS*, _tds__SetDynamicDNSResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNetworkInterfaces(_tds__GetNetworkInterfaces*, _tds__GetNetworkInterfacesResponse&) {
    return SOAP_OK;
}

int DeviceService::SetNetworkInterfaces(_tds__SetNetworkInterfaces*, _tds__SetNetworkInterfacesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNetworkProtocols(_tds__GetNetworkProtocols*, _tds__GetNetworkProtocolsResponse&) {
    return SOAP_OK;
}

int DeviceService::SetNetworkProtocols(_tds__SetNetworkProtocols*, _tds__SetNetworkProtocolsResponse&) {
    return SOAP_OK;
}

int DeviceService::GetNetworkDefaultGateway(_tds__GetNetworkDefaultGateway*, _tds__GetNetworkDefaultGatewayResponse&) {
    return SOAP_OK;
}

int DeviceService::SetNetworkDefaultGateway(_tds__SetNetworkDefaultGateway*, _tds__SetNetworkDefaultGatewayResponse&) {
    return SOAP_OK;
}

int DeviceService::GetZeroConfiguration(_tds__GetZeroConfiguration*, _tds__GetZeroConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::SetZeroConfiguration(_tds__SetZeroConfiguration*, _tds__SetZeroConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetIPAddressFilter(_tds__GetIPAddressFilter*, _tds__GetIPAddressFilterResponse&) {
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

int DeviceService::GetAccessPolicy(_tds__GetAccessPolicy*, _tds__GetAccessPolicyResponse&) {
    return SOAP_OK;
}

int DeviceService::SetAccessPolicy(_tds__SetAccessPolicy*, _tds__SetAccessPolicyResponse&) {
    return SOAP_OK;
}

int DeviceService::CreateCertificate(_tds__CreateCertificate*, _tds__CreateCertificateResponse&) {
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

int DeviceService::GetPkcs10Request(_tds__GetPkcs10Request*, _tds__GetPkcs10RequestResponse&) {
    return SOAP_OK;
}

int DeviceService::LoadCertificates(_tds__LoadCertificates*, _tds__LoadCertificatesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetClientCertificateMode(_tds__GetClientCertificateMode*, _tds__GetClientCertificateModeResponse&) {
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

int DeviceService::GetCertificateInformation(_tds__GetCertificateInformation*, _tds__GetCertificateInformationResponse&) {
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

int DeviceService::GetDot1XConfiguration(_tds__GetDot1XConfiguration*, _tds__GetDot1XConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDot1XConfigurations(_tds__GetDot1XConfigurations*, _tds__GetDot1XConfigurationsResponse&) {
    return SOAP_OK;
}

int DeviceService::DeleteDot1XConfiguration(_tds__DeleteDot1XConfiguration*, _tds__DeleteDot1XConfigurationResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDot11Capabilities(_tds__GetDot11Capabilities*, _tds__GetDot11CapabilitiesResponse&) {
    return SOAP_OK;
}

int DeviceService::GetDot11Status(_tds__GetDot11Status*, _tds__GetDot11StatusResponse&) {
    return SOAP_OK;
}

int DeviceService::ScanAvailableDot11Networks(_tds__ScanAvailableDot11Networks*, _tds__ScanAvailableDot11NetworksResponse&) {
    return SOAP_OK;
}

int DeviceService::GetSystemUris(_tds__GetSystemUris*, _tds__GetSystemUrisResponse&) {
    return SOAP_OK;
}

int DeviceService::StartFirmwareUpgrade(_tds__StartFirmwareUpgrade*, _tds__StartFirmwareUpgradeResponse&) {
    return SOAP_OK;
}

int DeviceService::StartSystemRestore(_tds__StartSystemRestore*, _tds__StartSystemRestoreResponse&) {
    return SOAP_OK;
}

int EventService::GetServiceCapabilities(_tev__GetServiceCapabilities*, _tev__GetServiceCapabilitiesResponse&) {
    return SOAP_OK;
}

int EventService::CreatePullPointSubscription(_tev__CreatePullPointSubscription*, _tev__CreatePullPointSubscriptionResponse&) {
    return SOAP_OK;
}

int EventService::GetEventProperties(_tev__GetEventProperties*, _tev__GetEventPropertiesResponse&) {
    return SOAP_OK;
}

int MediaService::GetServiceCapabilities(_trt__GetServiceCapabilities*, _trt__GetServiceCapabilitiesResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioSources(_trt__GetAudioSources*, _trt__GetAudioSourcesResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioOutputs(_trt__GetAudioOutputs*, _trt__GetAudioOutputsResponse&) {
    return SOAP_OK;
}

int MediaService::CreateProfile(_trt__CreateProfile*, _trt__CreateProfileResponse&) {
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

int MediaService::GetVideoSourceConfiguration(_trt__GetVideoSourceConfiguration*, _trt__GetVideoSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoEncoderConfiguration(_trt__GetVideoEncoderConfiguration*, _trt__GetVideoEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioSourceConfiguration(_trt__GetAudioSourceConfiguration*, _trt__GetAudioSourceConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioEncoderConfiguration(_trt__GetAudioEncoderConfiguration*, _trt__GetAudioEncoderConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoAnalyticsConfiguration(_trt__GetVideoAnalyticsConfiguration*, _trt__GetVideoAnalyticsConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetMetadataConfiguration(_trt__GetMetadataConfiguration*, _trt__GetMetadataConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioOutputConfiguration(_trt__GetAudioOutputConfiguration*, _trt__GetAudioOutputConfigurationResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioDecoderConfiguration(_trt__GetAudioDecoderConfiguration*, _trt__GetAudioDecoderConfigurationResponse&) {
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

int MediaService::GetVideoSourceConfigurationOptions(_trt__GetVideoSourceConfigurationOptions*, _trt__GetVideoSourceConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetVideoEncoderConfigurationOptions(_trt__GetVideoEncoderConfigurationOptions*, _trt__GetVideoEncoderConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioSourceConfigurationOptions(_trt__GetAudioSourceConfigurationOptions*, _trt__GetAudioSourceConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioEncoderConfigurationOptions(_trt__GetAudioEncoderConfigurationOptions*, _trt__GetAudioEncoderConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetMetadataConfigurationOptions(_trt__GetMetadataConfigurationOptions*, _trt__GetMetadataConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioOutputConfigurationOptions(_trt__GetAudioOutputConfigurationOptions*, _trt__GetAudioOutputConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetAudioDecoderConfigurationOptions(_trt__GetAudioDecoderConfigurationOptions*, _trt__GetAudioDecoderConfigurationOptionsResponse&) {
    return SOAP_OK;
}

int MediaService::GetGuaranteedNumberOfVideoEncoderInstances(_trt__GetGuaranteedNumberOfVideoEncoderInstances*, _trt__GetGuaranteedNumberOfVideoEncoderInstancesResponse&) {
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

int DisplayService::GetServiceCapabilities(_tls__GetServiceCapabilities*, _tls__GetServiceCapabilitiesResponse&) {
    return SOAP_OK;
}

int DisplayService::GetLayout(_tls__GetLayout*, _tls__GetLayoutResponse&) {
    return SOAP_OK;
}

int DisplayService::SetLayout(_tls__SetLayout*, _tls__SetLayoutResponse&) {
    return SOAP_OK;
}

int DisplayService::GetDisplayOptions(_tls__GetDisplayOptions*, _tls__GetDisplayOptionsResponse&) {
    return SOAP_OK;
}

int DisplayService::GetPaneConfigurations(_tls__GetPaneConfigurations*, _tls__GetPaneConfigurationsResponse&) {
    return SOAP_OK;
}

int DisplayService::GetPaneConfiguration(_tls__GetPaneConfiguration*, _tls__GetPaneConfigurationResponse&) {
    return SOAP_OK;
}

int DisplayService::SetPaneConfigurations(_tls__SetPaneConfigurations*, _tls__SetPaneConfigurationsResponse&) {
    return SOAP_OK;
}

int DisplayService::SetPaneConfiguration(_tls__SetPaneConfiguration*, _tls__SetPaneConfigurationResponse&) {
    return SOAP_OK;
}

int DisplayService::CreatePaneConfiguration(_tls__CreatePaneConfiguration*, _tls__CreatePaneConfigurationResponse&) {
    return SOAP_OK;
}

int DisplayService::DeletePaneConfiguration(_tls__DeletePaneConfiguration*, _tls__DeletePaneConfigurationResponse&) {
    return SOAP_OK;
}
