# Shared by run.sh and test.sh: install what the build needs when it is missing,
# then configure and build. Source it; it expects BUILD_DIR and CMAKE_ARGS.

# Debian/Ubuntu packages the build, the tests and the program use. Reading
# aloud needs Qt's text to speech with the offline flite voice, and Qt
# Multimedia to find the sound device; Qt's text-to-speech CMake files also
# ask for the QML headers, which its package does not pull in.
TAVRINO_PACKAGES=(build-essential cmake qt6-base-dev qt6-charts-dev libgtest-dev libbenchmark-dev libsqlite3-dev
                  fonts-liberation qt6-speech-dev qt6-speech-flite-plugin qt6-multimedia-dev
                  qt6-declarative-dev)
# What `scripts/test.sh --windows` adds: the cross compiler and Wine to run its tests.
TAVRINO_WINDOWS_PACKAGES=(g++-mingw-w64-x86-64-posix wine64)

tavrino_missing_packages() {
    local missing=() pkg
    for pkg in "$@"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$pkg")
    done
    echo "${missing[@]}"
}

tavrino_install() {
    local missing
    missing=$(tavrino_missing_packages "$@")
    [ -z "$missing" ] && return 0
    echo "Installing: $missing"
    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Please run as root or install sudo." >&2; return 1; }
        sudo="sudo"
    fi
    $sudo apt-get update -qq
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends $missing
}

tavrino_build() {
    tavrino_install "${TAVRINO_PACKAGES[@]}"
    cmake -S . -B "$BUILD_DIR" "${CMAKE_ARGS[@]}"
    cmake --build "$BUILD_DIR" -j"$(nproc)"
}
