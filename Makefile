# Commands for newcomers; all set the machine up first. The work is done by tools/setup and the CMake presets.
.PHONY: all demo install package test web
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

# The command as WebAssembly: the npm package and the page, into build/web/dist.
web:
	tools/setup web
	cmake --preset web
	cmake --build --preset web

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
	$(MAKE) web
	cmake -E copy_directory build/web/dist dist/web
	cmake -E rm -rf dist/web/npm
	packaging/write_boms.py dist
	cmake -E chdir dist find . -type f
