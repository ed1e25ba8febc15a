// Finds the device of one stream the way an ONVIF client does: a WS-Discovery Probe, then the
// device service at the address the answer gives, then capabilities, profiles and stream URI.
// Prints one JSON line with what it found; exits non-zero when a step fails. With a second
// argument, also fetches the snapshot the device names and saves it there.
'use strict';
const fs = require('fs');
const http = require('http');
const onvif = require('onvif');

const name = process.argv[2];
const snapshotFile = process.argv[3];
const fail = (step, err) => {
    console.log(JSON.stringify({ failed: step, error: String(err) }));
    process.exit(1);
};

onvif.Discovery.probe({ timeout: 4000, resolve: false }, (err, matches) => {
    if (err) fail('probe', err);
    const found = (matches || []).map((m) => m.probeMatches.probeMatch)
        .find((m) => String(m.scopes).includes('/name/' + name));
    if (!found) fail('probe', 'no answer for ' + name);
    const xaddr = new URL(String(found.XAddrs).trim().split(' ')[0]);
    const cam = new onvif.Cam({ hostname: xaddr.hostname, port: Number(xaddr.port),
        path: xaddr.pathname, autoconnect: false, timeout: 5000 });
    cam.getDeviceInformation((err, info) => {
        if (err) fail('device information', err);
        cam.getCapabilities((err, caps) => {
            if (err) fail('capabilities', err);
            cam.getProfiles((err, profiles) => {
                if (err) fail('profiles', err);
                cam.getStreamUri({ protocol: 'RTSP', profileToken: profiles[0].$.token },
                    (err, stream) => {
                        if (err) fail('stream uri', err);
                        const found = {
                            xaddr: xaddr.href,
                            manufacturer: info.manufacturer,
                            model: info.model,
                            mediaXAddr: caps.media.XAddr,
                            profile: profiles[0].name,
                            width: profiles[0].videoEncoderConfiguration.resolution.width,
                            uri: stream.uri,
                        };
                        if (!snapshotFile) {
                            console.log(JSON.stringify(found));
                            process.exit(0);
                        }
                        cam.getSnapshotUri({ profileToken: profiles[0].$.token }, (err, shot) => {
                            if (err) fail('snapshot uri', err);
                            found.snapshotUri = shot.uri;
                            http.get(shot.uri, (res) => {
                                const parts = [];
                                res.on('data', (part) => parts.push(part));
                                res.on('end', () => {
                                    fs.writeFileSync(snapshotFile, Buffer.concat(parts));
                                    found.snapshotType = res.headers['content-type'];
                                    console.log(JSON.stringify(found));
                                    process.exit(0);
                                });
                            }).on('error', (err) => fail('snapshot', err));
                        });
                    });
            });
        });
    });
});
