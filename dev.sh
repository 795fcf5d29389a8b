#!/usr/bin/env bash
# Developer entry point: builds libvorparameter and runs its demo, tests,
# sanitizer tests, benchmarks or fuzzers, or its API reference. Missing build tools are installed
# with apt-get on Debian-like systems.
#
#   ./dev.sh demo       build (build/) and run `vorparam demo`
#   ./dev.sh test       build with tests and benchmarks, run every test
#   ./dev.sh sanitize   build with ASan+UBSan (build-sanitize/), run every test
#   ./dev.sh tsan       build with ThreadSanitizer (build-tsan/), run the handle tests
#   ./dev.sh fuzz [S]   build the libFuzzer targets with clang (build-fuzz/) and
#                       run each for S seconds (30); any finding fails
#   ./dev.sh bench      build and run the benchmarks
#   ./dev.sh docs       generate the API reference with Doxygen (build-docs/html/)
#
# Environment: VORPARAMETER_BUILD_DIR, VORPARAMETER_SANITIZE_BUILD_DIR,
# VORPARAMETER_TSAN_BUILD_DIR, VORPARAMETER_FUZZ_BUILD_DIR and
# VORPARAMETER_DOCS_DIR override the build folders; CTEST_JOBS the test parallelism (2); FUZZ_RSS_LIMIT_MB the
# memory a fuzzer may hold before its growth counts as a finding (2048).
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")"

BUILD_DIR=${VORPARAMETER_BUILD_DIR:-build}
SANITIZE_DIR=${VORPARAMETER_SANITIZE_BUILD_DIR:-build-sanitize}
TSAN_DIR=${VORPARAMETER_TSAN_BUILD_DIR:-build-tsan}
FUZZ_DIR=${VORPARAMETER_FUZZ_BUILD_DIR:-build-fuzz}
DOCS_DIR=${VORPARAMETER_DOCS_DIR:-build-docs}
FUZZ_RSS_LIMIT_MB=${FUZZ_RSS_LIMIT_MB:-2048}
CTEST_JOBS=${CTEST_JOBS:-2}
JOBS=$(nproc 2>/dev/null || echo 2)

say() { printf '==> %s\n' "$*"; }
die() {
    printf 'dev.sh: %s\n' "$*" >&2
    exit 1
}

usage() {
    cat <<'EOF'
usage: ./dev.sh <command>

  demo       build everything (build/) and run `vorparam demo`
  test       build with tests and benchmarks (build/) and run all tests
  sanitize   build with AddressSanitizer and UBSan (build-sanitize/) and run all tests
  tsan       build with ThreadSanitizer (build-tsan/) and run the handle tests
  fuzz [S]   build the libFuzzer targets with clang (build-fuzz/) and run each
             for S seconds (default 30); a crash, leak, timeout or OOM fails
  bench      build (build/) and run the benchmarks
  docs       generate the API reference with Doxygen (build-docs/html/index.html)
  help       show this message
EOF
}

# --- Build dependencies ------------------------------------------------------

is_installed() {
    dpkg -s "$1" 2>/dev/null | grep -q '^Status: install ok installed'
}

# Whether clang links a libFuzzer target (the runtime ships separately from
# the compiler on Debian).
fuzzer_links() {
    local probe
    command -v clang++ >/dev/null 2>&1 || return 1
    probe=$(mktemp -d)
    printf '%s\n' '#include <cstddef>' '#include <cstdint>' \
        'extern "C" int LLVMFuzzerTestOneInput(const uint8_t*, size_t) { return 0; }' \
        >"$probe/probe.cpp"
    clang++ -fsanitize=fuzzer "$probe/probe.cpp" -o "$probe/probe" >/dev/null 2>&1
    local status=$?
    rm -rf "$probe"
    return $status
}

# Debian packages still missing for the given needs ("base", "test", "fuzz",
# "docs").
missing_packages() {
    local need missing=()
    command -v cmake >/dev/null 2>&1 || missing+=(cmake)
    command -v g++ >/dev/null 2>&1 || missing+=(g++)
    command -v ninja >/dev/null 2>&1 || missing+=(ninja-build)
    # The vorparam tool, built by every command: arguments, JSON, the REPL.
    local tool_pkg
    for tool_pkg in libcli11-dev nlohmann-json3-dev libedit-dev; do
        is_installed "$tool_pkg" || missing+=("$tool_pkg")
    done
    for need in "$@"; do
        if [[ $need == test ]]; then
            command -v pkg-config >/dev/null 2>&1 || missing+=(pkg-config)
            local pkg
            for pkg in libgtest-dev libbenchmark-dev libmuparser-dev libxml2-dev libxml2-utils; do
                is_installed "$pkg" || missing+=("$pkg")
            done
        elif [[ $need == docs ]]; then
            # Graphviz's dot draws the class diagrams and the figures of docs/.
            command -v doxygen >/dev/null 2>&1 || missing+=(doxygen)
            command -v dot >/dev/null 2>&1 || missing+=(graphviz)
        elif [[ $need == fuzz ]]; then
            if ! command -v clang++ >/dev/null 2>&1; then
                missing+=(clang libclang-rt-dev)
            elif ! fuzzer_links; then
                missing+=(libclang-rt-dev)
            fi
        fi
    done
    [[ ${#missing[@]} -eq 0 ]] || printf '%s\n' "${missing[@]}"
}

apt_install() {
    local sudo=()
    if ! command -v apt-get >/dev/null 2>&1; then
        say "apt-get is not available"
        return 1
    fi
    if [[ $(id -u) -ne 0 ]]; then
        if ! command -v sudo >/dev/null 2>&1; then
            say "not root and sudo is not available"
            return 1
        fi
        sudo=(sudo)
    fi
    say "installing: $*"
    "${sudo[@]+"${sudo[@]}"}" env DEBIAN_FRONTEND=noninteractive apt-get update -q || return 1
    "${sudo[@]+"${sudo[@]}"}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "$@" || return 1
}

# Makes sure the tools for the given needs are present, installing what is
# missing. Ninja is preferred; make is an acceptable fallback.
ensure_deps() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -eq 0 ]] && return 0
    apt_install "${missing[@]}" || say "could not install: ${missing[*]}"
    mapfile -t missing < <(missing_packages "$@")
    if [[ ${#missing[@]} -eq 1 && ${missing[0]} == ninja-build ]] &&
        command -v make >/dev/null 2>&1; then
        say "ninja is not available; building with make"
        return 0
    fi
    [[ ${#missing[@]} -eq 0 ]] && return 0
    die "missing build dependencies: ${missing[*]} (install them, e.g. apt-get install ${missing[*]})"
}

# --- Configure and build -----------------------------------------------------

# configure <dir> <cmake -D options...>
# The first configure picks the generator and build type; later runs keep the
# folder's generator and only pass the options (a no-op when nothing changed).
configure() {
    local dir=$1
    shift
    local args=(-S . -B "$dir" "$@")
    if [[ ! -f $dir/CMakeCache.txt ]]; then
        if command -v ninja >/dev/null 2>&1; then
            args+=(-G Ninja)
        else
            args+=(-G "Unix Makefiles")
        fi
    fi
    say "configuring $dir"
    cmake "${args[@]}"
}

build() {
    local dir=$1
    shift
    say "building $dir"
    cmake --build "$dir" --parallel "$JOBS" "$@"
}

# --- Sanitizer options -------------------------------------------------------

# LeakSanitizer stops the process with ptrace at exit, which some containers
# and debuggers forbid.
# Probe once with a clean program: a working LeakSanitizer exits 0.
leak_detection_works() {
    local dir=$1 probe=$1/leak_probe
    mkdir -p "$dir"
    printf 'int main() { return 0; }\n' >"$probe.cpp"
    g++ -fsanitize=address "$probe.cpp" -o "$probe" >/dev/null 2>&1 || return 1
    ASAN_OPTIONS=detect_leaks=1 "$probe" >/dev/null 2>&1
}

export_sanitizer_options() {
    local leaks=1
    if ! leak_detection_works "$SANITIZE_DIR"; then
        leaks=0
        say "LeakSanitizer does not work here; running without leak detection"
    fi
    # Caller's options come last so they win.
    export ASAN_OPTIONS="halt_on_error=1:detect_leaks=$leaks:check_initialization_order=1:detect_stack_use_after_return=1${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
    export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
    say "ASAN_OPTIONS=$ASAN_OPTIONS"
    say "UBSAN_OPTIONS=$UBSAN_OPTIONS"
}

run_tests() {
    local dir=$1
    say "testing $dir"
    ctest --test-dir "$dir" --output-on-failure -j "$CTEST_JOBS" --timeout 900
}

# --- Commands ----------------------------------------------------------------

cmd_demo() {
    ensure_deps base
    if [[ -f $BUILD_DIR/CMakeCache.txt ]]; then
        configure "$BUILD_DIR"
    else
        configure "$BUILD_DIR" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
            -DVORPARAMETER_BUILD_TESTS=OFF -DVORPARAMETER_BUILD_BENCHMARKS=OFF
    fi
    build "$BUILD_DIR"
    "$BUILD_DIR/tools/vorparam/vorparam" demo
}

cmd_test() {
    ensure_deps base test
    local args=(-DVORPARAMETER_BUILD_TESTS=ON -DVORPARAMETER_BUILD_BENCHMARKS=ON)
    [[ -f $BUILD_DIR/CMakeCache.txt ]] || args+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
    configure "$BUILD_DIR" "${args[@]}"
    build "$BUILD_DIR"
    run_tests "$BUILD_DIR"
}

cmd_sanitize() {
    ensure_deps base test
    # Exported before building: test discovery runs the instrumented binaries.
    export_sanitizer_options
    local args=(-DVORPARAMETER_SANITIZE=ON -DVORPARAMETER_BUILD_TESTS=ON
        -DVORPARAMETER_BUILD_BENCHMARKS=OFF)
    [[ -f $SANITIZE_DIR/CMakeCache.txt ]] || args+=(-DCMAKE_BUILD_TYPE=Debug)
    configure "$SANITIZE_DIR" "${args[@]}"
    build "$SANITIZE_DIR"
    run_tests "$SANITIZE_DIR"
}

cmd_tsan() {
    ensure_deps base test
    export TSAN_OPTIONS="halt_on_error=1:second_deadlock_stack=1${TSAN_OPTIONS:+:$TSAN_OPTIONS}"
    local args=(-DVORPARAMETER_TSAN=ON -DVORPARAMETER_BUILD_TESTS=ON
        -DVORPARAMETER_BUILD_BENCHMARKS=OFF -DVORPARAMETER_BUILD_TOOLS=OFF)
    [[ -f $TSAN_DIR/CMakeCache.txt ]] || args+=(-DCMAKE_BUILD_TYPE=Debug)
    configure "$TSAN_DIR" "${args[@]}"
    build "$TSAN_DIR" --target vorparameter_tests
    say "testing $TSAN_DIR (Handle*)"
    "$TSAN_DIR/tests/vorparameter_tests" --gtest_filter='Handle*'
}

# run_fuzzer <target> <seconds>: runs one target on a scratch corpus in the
# fuzz build folder, seeded read-only from fuzz/corpus/<name> and the
# reproducers of past findings in fuzz/regressions/<name>; its log and any new
# reproducer stay in the build folder. A target whose input is not an
# expression has its own dictionary, fuzz/<name>.dict.
run_fuzzer() {
    local target=$1 seconds=$2 name=${1#fuzz_}
    local scratch=$FUZZ_DIR/corpus/$name findings=$FUZZ_DIR/findings/$name
    local log=$FUZZ_DIR/logs/$name.log seeds=("fuzz/corpus/$name")
    local dict=fuzz/vorparameter.dict
    [[ -d fuzz/regressions/$name ]] && seeds+=("fuzz/regressions/$name")
    [[ -f fuzz/$name.dict ]] && dict=fuzz/$name.dict
    mkdir -p "$scratch" "$findings" "$FUZZ_DIR/logs"
    say "fuzzing $name for ${seconds}s (log: $log)"
    if "$FUZZ_DIR/fuzz/$target" "$scratch" "${seeds[@]}" \
        -dict="$dict" -max_total_time="$seconds" -timeout=30 \
        -rss_limit_mb="$FUZZ_RSS_LIMIT_MB" -artifact_prefix="$findings/" \
        -print_final_stats=1 >"$log" 2>&1; then
        grep -aE '^#[0-9]+[[:space:]]+DONE' "$log" | tail -n 1
        return 0
    fi
    tail -n 40 "$log"
    say "$name: finding saved in $findings/"
    return 1
}

cmd_fuzz() {
    local seconds=${1:-30}
    [[ $seconds =~ ^[0-9]+$ ]] || die "fuzz: SECONDS must be a whole number, not \"$seconds\""
    ensure_deps base fuzz
    local leaks=1
    leak_detection_works "$FUZZ_DIR" || leaks=0
    export ASAN_OPTIONS="detect_leaks=$leaks${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
    export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
    local args=(-DVORPARAMETER_BUILD_FUZZERS=ON -DVORPARAMETER_BUILD_TESTS=OFF
        -DVORPARAMETER_BUILD_BENCHMARKS=OFF -DVORPARAMETER_BUILD_TOOLS=ON)
    [[ -f $FUZZ_DIR/CMakeCache.txt ]] ||
        args+=(-DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo)
    configure "$FUZZ_DIR" "${args[@]}"
    build "$FUZZ_DIR"
    local target failed=()
    for target in fuzz_evaluator fuzz_key fuzz_interpolation fuzz_dimensions fuzz_numeric \
        fuzz_loader fuzz_json; do
        run_fuzzer "$target" "$seconds" || failed+=("${target#fuzz_}")
    done
    [[ ${#failed[@]} -eq 0 ]] || die "fuzzing found problems in: ${failed[*]}"
}

cmd_bench() {
    ensure_deps base test
    local args=(-DVORPARAMETER_BUILD_BENCHMARKS=ON)
    [[ -f $BUILD_DIR/CMakeCache.txt ]] || args+=(-DCMAKE_BUILD_TYPE=RelWithDebInfo
        -DVORPARAMETER_BUILD_TESTS=OFF)
    configure "$BUILD_DIR" "${args[@]}"
    build "$BUILD_DIR" --target vorparameter_bench
    "$BUILD_DIR/bench/vorparameter_bench" "$@"
}

# The API reference from the public headers, README.md and docs/ (the settings
# are in docs/Doxyfile). Warnings are listed but do not fail the command.
cmd_docs() {
    ensure_deps docs
    local version
    version=$(sed -n 's/^project(vorparameter VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
    mkdir -p "$DOCS_DIR"
    say "generating the API reference in $DOCS_DIR/html"
    VORPARAMETER_DOCS_DIR=$DOCS_DIR VORPARAMETER_VERSION=$version doxygen docs/Doxyfile
    local warnings=$DOCS_DIR/doxygen-warnings.log
    if [[ -s $warnings ]]; then
        say "doxygen warned $(wc -l <"$warnings") times; see $warnings"
    fi
    say "open $DOCS_DIR/html/index.html"
}

command=${1:-}
[[ $# -gt 0 ]] && shift
case $command in
demo) cmd_demo ;;
test) cmd_test ;;
sanitize) cmd_sanitize ;;
tsan) cmd_tsan ;;
fuzz) cmd_fuzz "$@" ;;
bench) cmd_bench "$@" ;;
docs) cmd_docs ;;
help | -h | --help) usage ;;
*)
    usage >&2
    [[ -n $command ]] && printf '\ndev.sh: unknown command "%s"\n' "$command" >&2
    exit 2
    ;;
esac
