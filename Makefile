# Thin wrapper over CMake: `make run` and `make test` each do the whole set-up.
PRESET    ?= dev
BUILD_DIR := build/$(PRESET)
DEPS_STAMP := build/.deps.stamp
NPROC     := $(shell nproc 2>/dev/null || echo 2)

.PHONY: all run test test-asan bench fuzz deps build package clean

all: build

$(DEPS_STAMP): scripts/install-deps.sh
	scripts/install-deps.sh
	@mkdir -p $(@D) && touch $@

deps: $(DEPS_STAMP)

$(BUILD_DIR)/CMakeCache.txt: $(DEPS_STAMP) CMakeLists.txt CMakePresets.json
	cmake --preset $(PRESET)

build: $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j $(NPROC)

run: build
	$(BUILD_DIR)/verlis

test: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure

# All tests under the address, leak and undefined-behaviour sanitizers.
test-asan:
	$(MAKE) PRESET=asan test

bench: build
	cmake --build $(BUILD_DIR) -j $(NPROC) --target benchmarks
	bench/run.sh $(BUILD_DIR)

# Each fuzz target for FUZZ_SECONDS, from the seeds in fuzz/corpus.
FUZZ_SECONDS ?= 60
fuzz: $(DEPS_STAMP)
	cmake --preset fuzz
	cmake --build build/fuzz -j $(NPROC)
	fuzz/run.sh build/fuzz $(FUZZ_SECONDS)

# The Debian package, from the release build: build/release/verlis_<version>_amd64.deb
package:
	$(MAKE) build PRESET=release
	cd build/release && cpack

clean:
	rm -rf build
