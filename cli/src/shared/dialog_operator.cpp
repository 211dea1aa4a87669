// Works the plug-in's options dialog in place of a person.
#include "cli/shared/dialog_operator.h"

namespace cli {
namespace {

using host::scriptui::Element;
using host::scriptui::Window;

constexpr const char* kCopyAttributes = "Copy pre-comp attributes to layers";
constexpr const char* kDiscardAttributes = "Discard pre-comp attributes";
constexpr const char* kDeleteSource = "Delete source after exflating";
constexpr const char* kKeepInComp = "Keep pre-comp in composition";
constexpr const char* kPrependName = "Prepend pre-comp name to extracted layers";
constexpr const char* kFixRandom = "Attempt to correct layers with randomized expressions";
constexpr const char* kPrefix = "prefixInput";  // the only control without a text of its own
constexpr const char* kOk = "Ok";

void set_tick(Window& window, const char* text, bool wanted) {
    Element& box = window.control(text);
    if (box.value() == wanted) return;
    // Two boxes that disable each other can both be disabled if the dialog's settings were edited by hand.
    box.set_enabled(true);
    window.click(box);
}

}  // namespace

void DialogOperator::drive(Window& window) {
    window.click(window.control(answers_.copy_attributes ? kCopyAttributes : kDiscardAttributes));
    window.type_text(window.control(kPrefix), answers_.prefix);
    // A ticked box disables the other one, so the one to untick comes first.
    if (!answers_.delete_source) set_tick(window, kDeleteSource, false);
    set_tick(window, kKeepInComp, answers_.keep_in_comp);
    set_tick(window, kDeleteSource, answers_.delete_source);
    set_tick(window, kPrependName, answers_.prepend_name);
    set_tick(window, kFixRandom, answers_.fix_random);
    window.click(window.control(kOk));
}

}  // namespace cli
