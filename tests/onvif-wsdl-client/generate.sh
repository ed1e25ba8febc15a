#!/bin/sh
# Generates the WSDL client's bindings from the official WSDLs with gSOAP's own tools:
# generate.sh WSDL_FOLDER OUTPUT_FOLDER
set -eu
wsdls=$1
out=$2
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$out"
cd "$out"
wsdl2h -O4 -P -x -t /usr/share/gsoap/WS/typemap.dat -o wsdl.h \
    "$wsdls/devicemgmt.wsdl" "$wsdls/media.wsdl" "$wsdls/events.wsdl" "$wsdls/display.wsdl" \
    > wsdl2h.log 2>&1
# The UsernameToken header of WS-Security is not in the WSDLs; clients import it themselves.
sed -i 's|^#import "wsa5.h".*|&\n#import "wsse.h"|' wsdl.h
grep -q '^#import "wsse.h"' wsdl.h
soapcpp2 -C -L -x -2 -I/usr/share/gsoap/import:/usr/share/gsoap wsdl.h > soapcpp2.log 2>&1
python3 "$here/make_call_table.py" soapClient.cpp wsdl_calls.inc
