#!/usr/bin/env bash
# The program exports to plug-ins the event types of the plug-in contract and nothing of its
# own code: a plug-in built from the public headers binds to its own copies of the header-only
# helpers. What else the dynamic table holds is there because a system library it links calls
# back into it (gSOAP's callbacks, the toolkit's and the C++ runtime's shared templates).
set -euo pipefail
program="$1"
exported=$(nm -D --defined-only "$program" | awk '{print $3}' | grep -v '@' | c++filt)
failed=0
for name in EVT_BROADCAST_ROI_UPDATE EVT_BROADCAST_ROI_CHANGED EVT_LANE_UPDATE EVT_WBLIST_UPDATE; do
    if ! grep -qx "$name" <<<"$exported"; then
        echo "missing export: $name"
        failed=1
    fi
done
own=$(grep -E 'platform::|Project|Tag(String|Int|Open|Close)|GetTag|SplitChoices|Parametro|Plugin|Lane|Camera|Board|Trigger|Integrator|Processor|Onvif|Rtsp|Stream|Frame(Ring|Converter)|Transit|ODBC|Worker' <<<"$exported" | grep -v '^EVT_' || true)
if [ -n "$own" ]; then
    echo "the program exports its own code:"
    echo "$own" | head -20
    failed=1
fi
count=$(wc -l <<<"$exported")
if [ "$count" -gt 100 ]; then
    echo "the program exports $count symbols"
    failed=1
fi
if [ "$failed" -ne 0 ]; then
    echo "0 passed, 1 failed"
    exit 1
fi
echo "exports: $count symbols, the four event types among them"
echo "1 passed, 0 failed"
