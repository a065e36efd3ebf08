# The two commands of the README: `make run` and `make test`. Both install what is missing first.
BUILD ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?= -DCMAKE_BUILD_TYPE=RelWithDebInfo

.PHONY: deps configure build run test bench install clean

deps:
	./scripts/install-deps.sh

configure: deps
	cmake -S . -B $(BUILD) $(CMAKE_FLAGS)

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# Without ARGS, the sample documents are written and opened. Only what runs is built: the
# viewer (with its default settings) and the sample writer, not the tests or benchmarks.
run: configure
	cmake --build $(BUILD) -j $(JOBS) --target marnoquill marnoquill_samples
	@if [ -n "$(ARGS)" ]; then ./$(BUILD)/marnoquill $(ARGS); \
	else ./$(BUILD)/marnoquill_samples $(BUILD)/samples >/dev/null && \
	     ./$(BUILD)/marnoquill $(BUILD)/samples/*.tif $(BUILD)/samples/*.xdw; fi

test: build
	cd $(BUILD) && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j $(JOBS)

# The program, its default settings, help, icon, menu entry and file type, below PREFIX (and
# DESTDIR, for packaging). Only the program is built for it.
PREFIX ?= /usr/local
install: configure
	cmake --build $(BUILD) -j $(JOBS) --target marnoquill
	DESTDIR="$(DESTDIR)" cmake --install $(BUILD) --prefix "$(PREFIX)"

bench: build
	./scripts/run-benchmarks.sh $(BUILD)

clean:
	rm -rf $(BUILD)
