# Debian packages that the scripts need, one list a purpose, and how they get there. Sourced.

packages_build="g++ cmake ninja-build lld libcli11-dev nlohmann-json3-dev"
packages_ui="qt6-base-dev qt6-svg-dev libgl1-mesa-dev fonts-dejavu-core"
packages_test="libgtest-dev clang-format qt6-tools-dev xvfb xauth"
packages_deb="qt6-tools-dev lintian appstream desktop-file-utils"
packages_tidy="clang clang-tidy"
packages_fuzz="clang libclang-rt-14-dev"
packages_bench="gcc libinih-dev qt6-base-dev-tools"
packages_order="valgrind"
packages_bench_windows="libxdamage-dev qt6-tools-dev-tools linguist-qt6 xvfb xauth"

missing_packages() {
  local package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' ||
      printf '%s ' "$package"
  done
}

# need PACKAGE...: installs what is missing, or says what to install. Asks no network when all is there.
need() {
  local missing
  command -v dpkg-query >/dev/null || return 0 # not Debian: cmake will name what it lacks
  missing=$(missing_packages "$@")
  [ -n "$missing" ] || return 0
  if [ "$(id -u)" != 0 ]; then
    echo "Missing packages. Install them with: sudo apt-get install $missing" >&2
    return 1
  fi
  echo "Installing $missing"
  export DEBIAN_FRONTEND=noninteractive
  # The lists of a new machine may be empty or old.
  apt-get install -y -qq $missing >/dev/null 2>&1 ||
    { apt-get update -qq && apt-get install -y -qq $missing >/dev/null; }
}

# Compiles again only what changed, also in a new build folder, where ccache is at hand.
if command -v ccache >/dev/null; then
  export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
