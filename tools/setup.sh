# Shared by ./run, ./test and .ci/run: says what it does, installs what is missing, builds a preset.
# Source it from the repository's top folder.

say() { printf '\n==> %s\n' "$*"; }

# Runs a command as root: as it is for root itself, else through sudo.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

is_installed() {
  dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q 'install ok installed'
}

# Installs those of the named Debian packages that are missing.
need_packages() {
  local missing=()
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  if [ ${#missing[@]} -eq 0 ]; then
    echo "All $# Debian packages are there."
    return
  fi
  echo "Installing: ${missing[*]}"
  as_root apt-get update -q
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
    "${missing[@]}"
}

# As need_packages, for what the program can do without.
want_packages() {
  need_packages "$@" || echo "Could not install all of: $*. Going on without."
}

install_build_packages() {
  say "Looking for what the build needs"
  need_packages g++ cmake ninja-build pkg-config qt6-base-dev libgl-dev libsqlite3-dev libqpdf-dev \
    mdbtools-dev libcairo2-dev libfreetype-dev libfontconfig-dev zlib1g-dev
  need_packages qt6-svg-dev libqt6svg6 qt6-pdf-dev qt6-tools-dev qt6-tools-dev-tools \
    qt6-documentation-tools libqt6sql6-sqlite qt6-translations-l10n
}

# The office suite draws pages and makes PDF files; a Chinese font lets it draw the text.
install_office_packages() {
  say "Looking for the office suite (optional: exact page numbers, PDF)"
  if command -v soffice >/dev/null 2>&1; then
    echo "The office suite is there: $(command -v soffice)"
  else
    want_packages libreoffice-writer-nogui
  fi
  if [ -z "$(fc-list :lang=zh-cn 2>/dev/null | head -1)" ]; then
    want_packages fontconfig fonts-noto-cjk
  fi
}

install_test_packages() {
  say "Looking for what the tests need"
  need_packages libgtest-dev libgmock-dev libbenchmark-dev python3 clang-format clang-tidy
  want_packages antiword catdoc poppler-utils
}

# build_preset PRESET [TARGET ...]: configures and builds into build/PRESET, all or the targets.
build_preset() {
  say "Configuring the '$1' build"
  cmake --preset "$1" | grep -vE '^-- (Performing|Found|Looking|Detecting|Could NOT)' || true
  say "Building '$1' into build/$1"
  cmake --build "build/$1" ${2:+--target "${@:2}"}
}
