// The media operations with content: the device's one video source, its one profile and the
// RTSP address of the stream. Tokens and names are the same for every stream.
#include "OnvifDeviceData.h"
#include "SoapThread.h"
#include "soapMediaService.h"

namespace {

constexpr int kRtspPort = 8554;

const OnvifDeviceData& DataOf(struct soap* context) {
    return *static_cast<const OnvifDeviceData*>(context->user);
}

tt__VideoResolution* Resolution(struct soap* context, const OnvifDeviceData& data) {
    auto* resolution = soap_new_tt__VideoResolution(context);
    resolution->Width = data.width;
    resolution->Height = data.height;
    return resolution;
}

tt__VideoSourceConfiguration* SourceConfiguration(struct soap* context) {
    auto* source = soap_new_tt__VideoSourceConfiguration(context);
    source->Name = "user0";
    source->UseCount = 0;
    source->token = "0";
    source->SourceToken = "0";
    source->Bounds = soap_new_tt__IntRectangle(context);
    source->Bounds->x = source->Bounds->y = -1;
    source->Bounds->width = source->Bounds->height = -1;
    return source;
}

tt__VideoEncoderConfiguration* EncoderConfiguration(struct soap* context,
                                                    const OnvifDeviceData& data, int govLength) {
    auto* encoder = soap_new_tt__VideoEncoderConfiguration(context);
    encoder->Name = "mobile h264";
    encoder->UseCount = 0;
    encoder->token = "mobile_h264";
    encoder->Encoding = tt__VideoEncoding__H264;
    encoder->Resolution = Resolution(context, data);
    encoder->Quality = 80.0f;
    encoder->RateControl = soap_new_tt__VideoRateControl(context);
    encoder->RateControl->FrameRateLimit = data.fps;
    encoder->RateControl->EncodingInterval = 0;
    encoder->RateControl->BitrateLimit = data.bitrate;
    encoder->H264 = soap_new_tt__H264Configuration(context);
    encoder->H264->GovLength = govLength;
    encoder->H264->H264Profile = tt__H264Profile__Baseline;
    encoder->Multicast = soap_new_tt__MulticastConfiguration(context);
    encoder->Multicast->Address = soap_new_tt__IPAddress(context);
    encoder->Multicast->Address->Type = tt__IPType__IPv4;
    encoder->Multicast->Address->IPv4Address = soap_new_std__string(context);
    *encoder->Multicast->Address->IPv4Address = "0.0.0.0";
    encoder->Multicast->Port = 0;
    encoder->Multicast->TTL = 5;
    encoder->Multicast->AutoStart = false;
    encoder->SessionTimeout = "PT0H0M0.060S";  // 60 in the duration mapping: milliseconds
    return encoder;
}

// GetProfile and GetProfiles differ in the profile's name and the GOP length they tell.
tt__Profile* Profile(struct soap* context, const std::string& name, int govLength) {
    const OnvifDeviceData& data = DataOf(context);
    auto* profile = soap_new_tt__Profile(context);
    profile->token = "mobile_h264";
    profile->Name = name;
    profile->VideoSourceConfiguration = SourceConfiguration(context);
    profile->VideoEncoderConfiguration = EncoderConfiguration(context, data, govLength);
    return profile;
}

}  // namespace

int MediaService::GetVideoSources(_trt__GetVideoSources*, _trt__GetVideoSourcesResponse& response) {
    const OnvifDeviceData& data = DataOf(soap);
    auto* source = soap_new_tt__VideoSource(soap);
    source->token = "0";
    source->Framerate = static_cast<float>(data.fps);
    source->Resolution = Resolution(soap, data);
    response.VideoSources.push_back(source);
    return SOAP_OK;
}

int MediaService::GetProfile(_trt__GetProfile*, _trt__GetProfileResponse& response) {
    response.Profile = Profile(soap, "mobile1", 5);
    return SOAP_OK;
}

int MediaService::GetProfiles(_trt__GetProfiles*, _trt__GetProfilesResponse& response) {
    response.Profiles.push_back(Profile(soap, "mobile h264", 30));
    return SOAP_OK;
}

int MediaService::GetStreamUri(_trt__GetStreamUri*, _trt__GetStreamUriResponse& response) {
    const OnvifDeviceData& data = DataOf(soap);
    response.MediaUri = soap_new_tt__MediaUri(soap);
    response.MediaUri->Uri =
        "rtsp://" + data.Host() + ":" + std::to_string(kRtspPort) + "/" + data.name;
    response.MediaUri->InvalidAfterConnect = false;
    response.MediaUri->InvalidAfterReboot = false;
    response.MediaUri->Timeout = "PT0H0M1S";
    return SOAP_OK;
}

int MediaService::GetSnapshotUri(_trt__GetSnapshotUri*, _trt__GetSnapshotUriResponse& response) {
    const OnvifDeviceData& data = DataOf(soap);
    response.MediaUri = soap_new_tt__MediaUri(soap);
    response.MediaUri->Uri =
        "http://" + data.Host() + ":" + std::to_string(data.port) + SoapThread::kSnapshotPath;
    response.MediaUri->InvalidAfterConnect = false;
    response.MediaUri->InvalidAfterReboot = false;
    response.MediaUri->Timeout = "PT0H0M1S";
    return SOAP_OK;
}
