#!/usr/bin/env bash
# Installs what the workstation needs from Debian, then configures and builds into build/.
#
#   ./setup.sh          install packages (only the missing ones) and build
#   ./setup.sh run      ... then start the program on the embedded demo project
#   ./setup.sh test     ... then run the whole test suite
set -euo pipefail
cd "$(dirname "$0")"

PACKAGES=(
    # toolchain and test tools
    build-essential cmake ninja-build ccache pkg-config clang libclang-rt-14-dev procps iproute2
    libgtest-dev libgmock-dev libbenchmark-dev
    # desktop program
    libwxgtk3.2-dev xvfb xauth
    # pipeline and plate reading
    libopencv-dev
    # streaming
    libavcodec-dev libavutil-dev libavformat-dev libswscale-dev libx264-dev ffmpeg
    libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev libgstrtspserver-1.0-dev
    gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-plugins-bad
    gstreamer1.0-plugins-ugly gstreamer1.0-libav gstreamer1.0-tools
    gstreamer1.0-plugins-base-apps python3-gi gir1.2-gst-rtsp-server-1.0
    # ONVIF and discovery
    gsoap libgsoap-dev libxml2-dev libxml2-utils libssl-dev
    # transit database
    unixodbc unixodbc-dev tdsodbc libsqliteodbc libsqlite3-dev odbcinst
)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

missing_packages() {
    local p
    for p in "${PACKAGES[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || echo "$p"
    done
    # The ONVIF tests drive the device front with a Node.js client; an image that already
    # ships node and npm keeps them (Debian's npm conflicts with some of those builds).
    command -v node >/dev/null 2>&1 || echo nodejs
    command -v npm >/dev/null 2>&1 || echo npm
}

install_packages() {
    local missing
    missing=$(missing_packages | tr '\n' ' ')
    if [ -n "${missing// /}" ]; then
        echo "setup: installing ${missing}"
        as_root apt-get update -qq
        # shellcheck disable=SC2086
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
    fi
}

register_odbc_driver() {
    # Sites reach SQL Server through FreeTDS; the connection strings name the driver "SQL Server".
    local lib
    lib=$(find /usr/lib -name libtdsodbc.so 2>/dev/null | head -n 1 || true)
    if [ -n "$lib" ] && ! odbcinst -q -d -n "SQL Server" >/dev/null 2>&1; then
        printf '[SQL Server]\nDescription=FreeTDS driver for SQL Server\nDriver=%s\n' "$lib" \
            > /tmp/corvane-sqlserver-driver.ini
        as_root odbcinst -i -d -f /tmp/corvane-sqlserver-driver.ini >/dev/null || true
    fi
}

build() {
    local launcher=()
    command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache
        -DCMAKE_C_COMPILER_LAUNCHER=ccache)
    if [ ! -f build/CMakeCache.txt ]; then
        cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}"
    fi
    cmake --build build --parallel "$(nproc)"
}

install_packages
register_odbc_driver
build

case "${1:-}" in
    run)
        shift
        # The program's folder is its working directory: plug-ins, templates and projects.
        cd build
        # -nopwd: a first look needs no login; --demo: open the demo project and sample it.
        exec ./corvane -nopwd --demo "$@"
        ;;
    test)
        # The ONVIF tests drive the device front with the npm "onvif" client.
        (cd tests/onvif-client && npm ci --no-audit --no-fund --loglevel=error)
        cd build
        exec ctest --output-on-failure --timeout 900 -j "$(nproc)"
        ;;
    "") ;;
    *)
        echo "usage: $0 [run|test]" >&2
        exit 2
        ;;
esac
