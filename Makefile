# Two commands for newcomers; both set the machine up first. The work is done by tools/setup and the CMake presets.
.PHONY: all demo test

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
