#!/usr/bin/env bash
# check.sh [--list] [--update] [STEP...]: what must hold before a change is merged. Stops at the
# first step that fails and shows its output. --update rewrites the lists of exported names
# and the counts of instructions.
set -uo pipefail
cd "$(dirname "$0")/.."

# What ccache keeps serves every checkout, wherever it lies.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
jobs=$(nproc)
update=

build() {  # PRESET
    cmake --preset "$1" && cmake --build --preset "$1"
}

# ThreadSanitizer maps fixed addresses, which strongly randomised ones can collide with.
without_randomisation() {
    if setarch -R true 2>/dev/null; then setarch -R "$@"; else "$@"; fi
}

step_test() { build release && ctest --preset release -j "$jobs"; }

step_compare() {  # tests that draw random cases, with many more of them
    local suites
    suites=$(grep -lr 'rounds(' tests --include='*_test.cpp' |
        xargs sed -nE 's/^TEST\((\w+),.*/\1/p' | sort -u | paste -sd'|')
    build release && CNTR_TEST_ROUNDS=20 ctest --preset release -j "$jobs" -R "^($suites)\\."
}

step_asan() { build asan && ctest --preset asan -j "$jobs"; }
step_tsan() {
    cmake --preset tsan && cmake --build --preset tsan --target cntr_tests &&
        without_randomisation ctest --preset tsan -j "$jobs"
}
step_clang() { build clang && ctest --preset clang -j "$jobs"; }
step_format() { scripts/sources.sh | xargs clang-format --dry-run -Werror; }
step_tidy() {
    cmake --preset clang &&
        run-clang-tidy -quiet -j "$jobs" -p build/clang \
            "$PWD/(foundation/qc|cntr|ch_core|tools/cntr|examples)/.*\.cpp$"
}
step_house() { python3 scripts/check_house.py; }

step_headers() {  # every public header compiles alone
    local flags=(-std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
        -Iinclude -Ifoundation -x c++ -)
    { find include -name '*.h'; find foundation/qc -name '*.h' -not -path '*/internal/*'; } |
        sed -E 's#^(include|foundation)/##' | sort | while read -r header; do
        for compiler in g++ clang++; do
            echo "$compiler <$header>"
            # Twice: a header without its guard fails.
            printf '#include <%s>\n' "$header" "$header" | "$compiler" "${flags[@]}" || return 1
        done
    done
}

step_install() {  # a program elsewhere finds the installed package and works
    local work=$PWD/build/consumer
    rm -rf "$work"
    build release && cmake --install build/release --prefix "$work/prefix" >/dev/null || return
    for standard in 17 20; do
        cmake -G Ninja -S tests/consumer -B "$work/$standard" -DCMAKE_CXX_STANDARD=$standard \
            -DCMAKE_PREFIX_PATH="$work/prefix" &&
            cmake --build "$work/$standard" && "$work/$standard/consumer" || return
    done
    cmake -G Ninja -S tests/consumer -B "$work/subdirectory" -DCNTR_SOURCE="$PWD" &&
        cmake --build "$work/subdirectory" && "$work/subdirectory/consumer" || return
    local folder flags
    folder=$(dirname "$(find "$work/prefix" -name cntr.pc)")
    read -ra flags < <(PKG_CONFIG_PATH=$folder pkg-config --cflags --libs cntr)
    g++ -std=c++17 tests/consumer/main.cpp -o "$work/by_pkg_config" \
        "${flags[@]}" -Wl,-rpath,"$folder/.." && "$work/by_pkg_config"
}

step_symbols() {  # exactly the listed names are exported (release build, g++)
    build release || return
    local pair library list
    for pair in libcntr.so:scripts/exported_cntr.txt \
        libqcfoundation.so:scripts/exported_foundation.txt; do
        library=build/release/${pair%%:*} list=${pair#*:}
        nm -D --defined-only "$library" | cut -d' ' -f3- | c++filt | LC_ALL=C sort -u \
            >build/exported.txt
        [[ -n $update ]] && cp build/exported.txt "$list"
        diff -u "$list" build/exported.txt || return
    done
}

step_docs() { mkdir -p build/docs && doxygen docs/Doxyfile; }  # no warning, no name without comment

step_instructions() {  # instruction counts of fixed workloads stay what they were
    cmake --preset release -DCNTR_BENCH=ON &&
        cmake --build --preset release --target workloads &&
        scripts/instruction_counts.py build/release/bench/workloads ${update:+--update}
}

step_fuzz() { build fuzz && scripts/fuzz.sh build/fuzz/fuzz 10; }

steps=(format house headers docs test compare symbols install clang tidy asan tsan instructions fuzz)
chosen=()
for argument; do
    case $argument in
        --list) printf '%s\n' "${steps[@]}"; exit ;;
        --update) update=1 ;;
        *)
            if [[ " ${steps[*]} " != *" $argument "* ]]; then
                echo "check: there is no step '$argument'; the steps are: ${steps[*]}" >&2
                exit 2
            fi
            chosen+=("$argument")
            ;;
    esac
done
[[ ${#chosen[@]} -eq 0 ]] && chosen=("${steps[@]}")

scripts/install_packages.sh build check docs || exit
mkdir -p build
for step in "${chosen[@]}"; do
    if [[ $step == fuzz ]] && ! compgen -G 'fuzz/*_fuzz.cpp' >/dev/null; then
        continue
    fi
    start=$SECONDS
    printf '%-8s ' "$step"
    if ! "step_$step" >"build/check_$step.log" 2>&1; then
        printf 'FAILED after %d s\n\n' $((SECONDS - start))
        tail -n 200 "build/check_$step.log"
        exit 1
    fi
    printf 'passed in %d s\n' $((SECONDS - start))
done
echo "check: all ${#chosen[@]} steps passed"
