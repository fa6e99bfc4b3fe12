# Thin wrapper over CMake: `make run` and `make test` each do the whole set-up.
# Each job installs its own tools once (a stamp in build/stamps): `make run`
# only what building and running the program needs.
PRESET    ?= dev
BUILD_DIR := build/$(PRESET)
STAMPS    := build/stamps
NPROC     := $(shell nproc 2>/dev/null || echo 2)
# The C++ sources that the formatter and the checks look at.
SOURCES    = $(shell git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' \
                 'bench/*.cpp' 'bench/*.h' 'fuzz/*.cpp' 'fuzz/*.h')

.PHONY: all run test test-asan bench fuzz deps program build package clean \
        format check-format tidy

all: build

$(STAMPS)/%: scripts/install-deps.sh
	scripts/install-deps.sh $*
	@mkdir -p $(@D) && touch $@

deps: $(STAMPS)/run

$(BUILD_DIR)/CMakeCache.txt: $(STAMPS)/run CMakeLists.txt CMakePresets.json
	cmake --preset $(PRESET)

# The program, its default book and manual page, and nothing else.
program: $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j $(NPROC) --target verlis verlis_docs

# The program and its tests.
build: $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j $(NPROC)

# A user's build: optimised, and a new compiler's warning never stops it.
run:
	$(MAKE) program PRESET=release
	build/release/verlis

# The project's own checks build with warnings as errors.
test: $(STAMPS)/test
	$(MAKE) build
	ctest --test-dir $(BUILD_DIR) --output-on-failure

# All tests under the address, leak and undefined-behaviour sanitizers.
test-asan:
	$(MAKE) PRESET=asan test

# Configured again: the benchmark library may have come just now.
bench: $(STAMPS)/bench $(BUILD_DIR)/CMakeCache.txt
	cmake --preset $(PRESET) >/dev/null
	cmake --build $(BUILD_DIR) -j $(NPROC) --target benchmarks
	bench/run.sh $(BUILD_DIR)

# Each fuzz target for FUZZ_SECONDS, from the seeds in fuzz/corpus.
FUZZ_SECONDS ?= 60
fuzz: $(STAMPS)/fuzz
	cmake --preset fuzz
	cmake --build build/fuzz -j $(NPROC)
	fuzz/run.sh build/fuzz $(FUZZ_SECONDS)

# The Debian package, from the hardened release build:
# build/release/verlis_<version>_amd64.deb, checked by lintian. Every time
# that the build and the archive record is the last commit's (outside a git
# checkout, the change log's last entry's, as Debian takes it), so that two
# builds of one source give the same bytes. The release build installs what
# was built, no more: the package waits for no test being compiled.
package: export SOURCE_DATE_EPOCH ?= $(shell $(if $(wildcard .git),git log -1 --format=%ct,\
	date -d "$$(sed -n 's/^ -- .*>  //p' data/changelog.in | head -n 1)" +%s))
package: $(STAMPS)/package
	$(MAKE) program PRESET=release
	rm -f build/release/*.deb
	cd build/release && cpack
	lintian --pedantic --fail-on error,warning build/release/*.deb

format: $(STAMPS)/format
	@clang-format -i $(SOURCES)

# Fails on any difference from the house format, and names the files.
check-format: $(STAMPS)/format
	@clang-format --dry-run -Werror $(SOURCES)

# The checks of .clang-tidy over src, on the dev build's compile commands.
tidy: $(STAMPS)/tidy $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) --target buildyear
	run-clang-tidy -quiet -j $(NPROC) -p $(BUILD_DIR) '$(CURDIR)/src/.*\.cpp$$'

clean:
	rm -rf build
