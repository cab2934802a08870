# Two commands do all the set-up: `make demo` and `make check`.
BUILD   ?= build
JOBS    ?= $(shell nproc)
DEMO_DB ?= $(HOME)/.local/share/tarvin/demo.sqlite

.PHONY: all deps configure build check test demo bench bench-scale clean

all: build

deps:
	@scripts/install-deps.sh

configure: deps
	@cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

build: configure
	@cmake --build $(BUILD) -j $(JOBS)

# Every test, on SQLite and on a throwaway PostgreSQL cluster.
check: build
	@scripts/with-pg.sh ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# The tests on SQLite only (no PostgreSQL server).
test: build
	@ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# Writes the demo database when it is missing (with a progress line), then
# starts the host on it.
demo: build
	@mkdir -p $(dir $(DEMO_DB))
	@if [ ! -f "$(DEMO_DB)" ]; then $(BUILD)/bin/tarvin-demo-db --db sqlite:$(DEMO_DB); fi
	@echo "Demo database: $(DEMO_DB)"
	@$(BUILD)/bin/tarvin --demo --db sqlite:$(DEMO_DB)

bench: build
	@scripts/with-pg.sh sh -c 'for b in $(BUILD)/bin/bench_*; do $$b; done'

# The screening and alarm benchmarks at a million customers (SQLite) and
# 200,000 (PostgreSQL); about an hour, docs/performance.md.
bench-scale: build
	@BUILD=$(BUILD) scripts/bench-scale.sh

clean:
	rm -rf $(BUILD)
