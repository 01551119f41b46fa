# Entry points: `make demo` runs the main job on the bundled sample, `make test` runs every test.
SHELL := /bin/bash
BUILD_DIR := build

.PHONY: all deps configure build test demo package package-test bench asan fuzz format clean

all: build

deps:
	@scripts/install-deps

configure: deps
	cmake --preset default

build: configure
	cmake --build --preset default

test: build
	ctest --preset default

# The sample billing run: one invoice and its PDF per row in ./out, then the result list.
demo: build
	$(BUILD_DIR)/src/app/wordbm merge --form examples/Rechnung.docx --csv examples/Rechnungslauf.csv --pdf --out out

# The Debian package build/wordbm_<version>_amd64.deb (see cmake/DebianPackage.cmake).
package: build
	cd $(BUILD_DIR) && cpack
	@ls $(BUILD_DIR)/wordbm_*.deb

# The package checked, unpacked into a throw-away folder and run there (packaging/package-test).
package-test: build
	ctest --preset default -L package

bench: build
	bench/run $(BUILD_DIR)

asan: deps
	cmake --preset asan
	cmake --build --preset asan
	ctest --preset asan

# Every fuzz target (fuzz/) built with clang and libFuzzer, run FUZZ_SECONDS each on its seeds.
FUZZ_SECONDS ?= 600
CORPUS_DIR ?= ../shared/corpus
fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz --target wordbm_fuzz_targets
	nice -n 19 fuzz/run build-fuzz $(CORPUS_DIR) $(FUZZ_SECONDS) $(FUZZ_TARGETS)

format:
	git ls-files '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf $(BUILD_DIR) build-asan build-fuzz
