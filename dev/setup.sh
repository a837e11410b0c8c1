# Set-up shared by ./run and ./check: installs what is missing and builds. To be sourced.
# shellcheck shell=bash

zo_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
zo_build="$zo_root/build/release"

zo_common_packages=(g++ cmake ninja-build libeigen3-dev fonts-dejavu-core python3 python3-markdown)
zo_build_packages=("${zo_common_packages[@]}" qtbase5-dev libqt5svg5-dev qttools5-dev qttools5-dev-tools
    qttranslations5-l10n)
zo_qt6_packages=("${zo_common_packages[@]}" qt6-base-dev qt6-svg-dev qt6-5compat-dev qt6-tools-dev qt6-tools-dev-tools
    qt6-l10n-tools qt6-translations-l10n)
zo_check_packages=(libbenchmark-dev python3 libxtst-dev xvfb x11-utils libgl1-mesa-dri matchbox-window-manager
    openmpi-bin libopenmpi-dev procps git libxml2-utils clustershell pdsh mandoc
    poppler-utils pkg-config gcovr abigail-tools)
zo_lint_packages=(git clang-format-14 clang-tidy-14 clang-14 clazy)
zo_fuzz_packages=(clang-14 libclang-rt-14-dev)
zo_netns_packages=(iproute2 openssh-server openssh-client procps)
zo_engine_packages=(paraview python3-paraview openmpi-bin xvfb x11-utils libgl1-mesa-dri)
zo_package_packages=(git dpkg-dev file xz-utils gzip)
zo_package_check_packages=(lintian desktop-file-utils appstream mandoc mmdebstrap)

zo_say() {
    printf '== %s\n' "$*"
}

# zo_package_version VERSION: the version of packages of this commit, whose programs have VERSION. That of the tag where
# there is one; between releases one that sorts there and names the commit. Fails when tag and VERSION differ.
zo_package_version() {
    local tag
    tag=$(git describe --tags --exact-match --match 'v[0-9]*' HEAD 2>/dev/null || true)
    if [ -n "$tag" ]; then
        [ "$tag" = "v$1" ] || {
            echo "CMakeLists.txt says $1, and the tag of this commit $tag" >&2
            return 1
        }
        echo "$1"
    elif tag=$(git describe --tags --long --abbrev=7 --match 'v[0-9]*' HEAD 2>/dev/null); then
        tag=${tag#v}
        echo "${tag%%-*}+$(tr - . <<<"${tag#*-}")"
    else
        echo "$1~$(git rev-list --count HEAD).g$(git rev-parse --short=7 HEAD)"
    fi
}

# zo_install PACKAGE...: installs the packages that are missing, and says so.
zo_install() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        zo_say "All needed packages are installed"
        return
    fi
    zo_say "Installing ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and there is neither root nor sudo to install them: ${missing[*]}" >&2
            exit 1
        }
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# zo_build_release [CMAKE-OPTION...]
zo_build_release() {
    zo_build_preset release "$@"
}

# zo_build_preset PRESET [CMAKE-OPTION...]: in build/PRESET, which is zo_build from then on.
zo_build_preset() {
    local preset=$1
    shift
    zo_build="$zo_root/build/$preset"
    mkdir -p "$zo_root/build"
    zo_say "Configuring $zo_build"
    (cd "$zo_root" && cmake --preset "$preset" "$@") >"$zo_root/build/configure.log" 2>&1 || {
        cat "$zo_root/build/configure.log" >&2
        exit 1
    }
    zo_say "Building"
    cmake --build "$zo_build"
}
