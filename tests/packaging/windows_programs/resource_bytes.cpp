// Finds a module's property resource as Windows finds it, without running the module, and prints its bytes in
// hexadecimal: resource_bytes MODULE.
#include <windows.h>

#include <cstdio>

int main(int count, char** arguments) {
    if (count != 2) return 2;
    const HMODULE module = LoadLibraryExA(arguments[1], nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (module == nullptr) return 1;
    const HRSRC resource = FindResourceA(module, MAKEINTRESOURCEA(16000), "PiPL");
    if (resource == nullptr) return 1;
    const auto* bytes = static_cast<const unsigned char*>(LockResource(LoadResource(module, resource)));
    for (DWORD i = 0; i < SizeofResource(module, resource); ++i) std::printf("%02x", bytes[i]);
}
