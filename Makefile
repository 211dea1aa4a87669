# Commands for newcomers; all set the machine up first. The work is done by tools/setup and the CMake presets.
.PHONY: all demo install package test
PREFIX = /usr/local

all:
	tools/setup
	cmake --preset release -DBUILD_TESTING=OFF
	cmake --build --preset release

demo: all
	tools/demo build/release

test:
	tools/setup test
	cmake --preset release -DBUILD_TESTING=ON
	cmake --build --preset release
	ctest --preset release $(CTEST_FLAGS)

# DESTDIR is honoured.
install: all
	cmake --install build/release --strip --prefix "$(PREFIX)"

# What people install, for each system, into dist/.
package:
	tools/setup package
	cmake --preset release -DBUILD_TESTING=OFF
	cmake --build --preset release --target packages
	cmake -E rm -rf dist
	cmake -E copy_directory build/release/dist dist
	cmake -E chdir dist find . -type f
