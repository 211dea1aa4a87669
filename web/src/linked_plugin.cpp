// The plug-in as part of the program, where no module can be loaded.
#include "AE_GeneralPlug.h"
#include "base/linked_module.h"

extern "C" A_Err EntryPointFunc(SPBasicSuite*, A_long, A_long, AEGP_PluginID, AEGP_GlobalRefcon*);

namespace host::base {

std::span<const LinkedModule> linked_modules() {
    static const LinkedModule modules[] = {
        {"Exflate.so", "EntryPointFunc", reinterpret_cast<void (*)()>(&EntryPointFunc)}};
    return modules;
}

}  // namespace host::base
