#pragma once

struct soap;

// A fixed answer fragment of the device front, written into the answer as it stands once its
// fields are filled from the connection's device data: {XADDR} the service address, {NOW} the
// time in UTC, {WIDTH} and {HEIGHT} the stream's picture size. The text lives as long as the
// request's answer.
char* OnvifLiteral(struct soap* context, const char* text);
