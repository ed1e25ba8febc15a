#!/usr/bin/python3
# A camera served by GStreamer's RTSP server on 127.0.0.1, one mount a codec: /h264, /h265 and
# /mjpeg, 640x360 at 15 pictures a second. Prints "ready" once it listens; ends by itself after
# its lifetime.   gst_rtsp_camera.py PORT LIFETIME_S
import sys

import gi

gi.require_version("Gst", "1.0")
gi.require_version("GstRtspServer", "1.0")
from gi.repository import GLib, Gst, GstRtspServer  # noqa: E402

SOURCE = ("videotestsrc is-live=true pattern=ball ! "
          "video/x-raw,format=I420,width=640,height=360,framerate=15/1 ! ")
ENCODERS = {
    "/h264": "x264enc tune=zerolatency speed-preset=ultrafast key-int-max=15 ! "
             "rtph264pay name=pay0 pt=96",
    "/h265": "x265enc tune=zerolatency speed-preset=ultrafast key-int-max=15 ! "
             "rtph265pay name=pay0 pt=96",
    "/mjpeg": "jpegenc quality=80 ! rtpjpegpay name=pay0 pt=26",
}


def main():
    port, lifetime = sys.argv[1], int(sys.argv[2])
    Gst.init(None)
    server = GstRtspServer.RTSPServer()
    server.set_address("127.0.0.1")
    server.set_service(port)
    mounts = server.get_mount_points()
    for path, encoder in ENCODERS.items():
        factory = GstRtspServer.RTSPMediaFactory()
        factory.set_launch("( " + SOURCE + encoder + " )")
        factory.set_shared(True)
        mounts.add_factory(path, factory)
    if server.attach(None) == 0:
        sys.exit("gst_rtsp_camera: port %s not free" % port)
    print("ready", flush=True)
    loop = GLib.MainLoop()
    GLib.timeout_add_seconds(lifetime, loop.quit)
    loop.run()


main()
