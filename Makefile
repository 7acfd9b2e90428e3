# The two commands of the README. Both install what is missing, configure and build.
JOBS ?= $(shell nproc)
BUILD ?= build
ASAN_BUILD ?= build-asan
CONFIG = -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSALINE_WERROR=ON
ASAN_CONFIG = -DCMAKE_BUILD_TYPE=Debug -DTESSALINE_WERROR=ON -DTESSALINE_SANITIZE=ON -DTESSALINE_BENCH=OFF

.PHONY: all bootstrap configure build demo studio test test-fast test-asan fuzz fuzz-smoke bench format \
	check-format clean

all: build

bootstrap:
	@scripts/bootstrap

configure: bootstrap
	@cmake -S . -B $(BUILD) $(CONFIG) >/dev/null

build: configure
	@cmake --build $(BUILD) -j$(JOBS)

demo: configure
	@cmake --build $(BUILD) -j$(JOBS) --target tessaline-demo tessaline-studio
	@$(BUILD)/apps/tessaline-demo --out out
	@echo "\n== The studio: the sample device's dialogs in Qt windows (offscreen), as screenshots =="
	@QT_QPA_PLATFORM=offscreen $(BUILD)/apps/tessaline-studio --screenshots out 2>/dev/null

# The studio in a real window (needs a display).
studio: configure
	@cmake --build $(BUILD) -j$(JOBS) --target tessaline-studio
	@$(BUILD)/apps/tessaline-studio

test: check-format test-fast test-asan fuzz-smoke

test-fast: build
	@ctest --test-dir $(BUILD) --output-on-failure -j$(JOBS)

test-asan: bootstrap
	@cmake -S . -B $(ASAN_BUILD) $(ASAN_CONFIG) >/dev/null
	@cmake --build $(ASAN_BUILD) -j$(JOBS)
	@ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	  LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp \
	  ctest --test-dir $(ASAN_BUILD) --output-on-failure -j$(JOBS)

# Every fuzz target built with clang and libFuzzer, run for FUZZ_SECONDS each.
FUZZ_SECONDS ?= 60
fuzz: bootstrap
	@FUZZ_SECONDS=$(FUZZ_SECONDS) JOBS=$(JOBS) scripts/fuzz

# What CI runs: the harnesses must build and survive a short run each.
fuzz-smoke: bootstrap
	@FUZZ_SECONDS=15 JOBS=$(JOBS) scripts/fuzz

bench: configure
	@cmake --build $(BUILD) -j$(JOBS) --target tessaline-bench tessaline-qt-bench
	@$(BUILD)/bench/tessaline-bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
	@QT_QPA_PLATFORM=offscreen $(BUILD)/bench/tessaline-qt-bench --benchmark_repetitions=5 \
	  --benchmark_report_aggregates_only=true

# Layout is decided by .clang-format; CI fails on any file that it would change.
FORMAT_FILES = $(wildcard $(shell git ls-files -co --exclude-standard '*.h' '*.cpp'))
format:
	@clang-format -i $(FORMAT_FILES)

check-format:
	@if command -v clang-format >/dev/null; then \
	  clang-format --dry-run --Werror $(FORMAT_FILES) || { echo "run 'make format'"; exit 1; }; \
	else echo "clang-format not installed: format check skipped"; fi

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) build-fuzz out
