# Sourced by the scripts: installs Debian packages that are missing, and says so.

need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These Debian packages are missing, and installing them needs root: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing Debian packages: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

build_packages=(g++ cmake ninja-build ccache libxml2-dev)
test_packages=(libgtest-dev pkg-config libglib2.0-dev libuv1-dev)  # two of them for the examples' event loops
check_packages=(clang clang-format clang-tidy libclang-rt-14-dev python3 libxml2-utils locales)
bench_packages=("${test_packages[@]}" libbenchmark-dev python3 libfast-float-dev libfmt-dev libboost-dev libabsl-dev libpoco-dev
    libsigc++-2.0-dev libasio-dev nlohmann-json3-dev libexpat1-dev libpugixml-dev libtinyxml2-dev libssl-dev uuid-dev
    qt6-base-dev)
