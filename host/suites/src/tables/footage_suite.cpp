// Footage suite 5: solids and the interpretation of footage.
#include <cstring>

#include "calls/slot.h"
#include "model/item.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Item;

constexpr int kLargestSide = 30'000;  // pixels

SolidFootage new_solid(std::string name, A_long width, A_long height, const AEGP_ColorVal& color) {
    if (width < 1 || height < 1 || width > kLargestSide || height > kLargestSide)
        refuse_argument("A solid cannot be " + std::to_string(width) + " x " + std::to_string(height) + " pixels.");
    return {std::move(name), width, height, color};
}

// The project takes ownership, so the handle is disposed of.
OrNull<Item*> add_to_project(HostState& host, HandleOf<SolidFootage> handle, Item& folder) {
    const SolidFootage& solid = host.ledger.find<SolidFootage>(handle.handle);
    if (folder.type() != model::ItemType::folder)
        refuse_argument("Item " + std::to_string(folder.id()) + " is not a folder.");
    model::FootageFacts facts;
    facts.is_solid = true;
    facts.color = {solid.color.redF, solid.color.greenF, solid.color.blueF, solid.color.alphaF};
    Item& item = host.project.add_footage(solid.name, facts, solid.width, solid.height, &folder);
    host.ledger.dispose<SolidFootage>(handle.handle);
    return {&item};
}

void dispose(HostState& host, HandleOf<SolidFootage> handle) {
    host.ledger.dispose<SolidFootage>(handle.handle);
}

void require_footage(const Item& item, bool proxy) {
    if (item.type() != model::ItemType::footage)
        refuse_argument("Item " + std::to_string(item.id()) + " is not footage.");
    if (proxy) refuse_argument("The footage has no proxy.");
}

// The host stores only the pixel aspect; the other fields say that nothing is converted.
AEGP_FootageInterp interpretation_of(Item& item, bool proxy) {
    require_footage(item, proxy);
    AEGP_FootageInterp interpretation;
    std::memset(&interpretation, 0, sizeof interpretation);
    interpretation.il.type = FIEL_Type_FRAME_RENDERED;
    interpretation.pd = AEGP_PulldownPhase_NO_PULLDOWN;
    interpretation.loop.loops = 1;
    interpretation.pix_aspect_ratio = {item.pixel_aspect().num, item.pixel_aspect().den};
    interpretation.depthL = 32;
    return interpretation;
}

// Field by field, because padding is undefined.
bool differ_in_aspect_only(const AEGP_FootageInterp& a, const AEGP_FootageInterp& b) {
    return a.il.signature == b.il.signature && a.il.version == b.il.version && a.il.type == b.il.type &&
           a.il.order == b.il.order && a.al.flags == b.al.flags && a.al.redCu == b.al.redCu &&
           a.al.greenCu == b.al.greenCu && a.al.blueCu == b.al.blueCu && a.pd == b.pd && a.loop.loops == b.loop.loops &&
           a.native_fpsF == b.native_fpsF && a.conform_fpsF == b.conform_fpsF && a.depthL == b.depthL &&
           a.motion_dB == b.motion_dB;
}

void set_interpretation(Item& item, bool proxy, const AEGP_FootageInterp& interpretation) {
    if (!differ_in_aspect_only(interpretation, interpretation_of(item, proxy)))
        refuse_as_unsupported("Of an interpretation the host changes the pixel aspect only.");
    const A_Ratio aspect = interpretation.pix_aspect_ratio;
    if (aspect.num < 1 || aspect.den < 1)
        refuse_argument("A pixel cannot have the aspect " + std::to_string(aspect.num) + ":" +
                        std::to_string(aspect.den) + ".");
    item.set_pixel_aspect({aspect.num, aspect.den});
}

}  // namespace

template <>
AEGP_FootageSuite5 make_suite() {
    using Suite = AEGP_FootageSuite5;
    Suite s = trapped_suite<Suite>();
    s.AEGP_NewSolidFootage = slot<&Suite::AEGP_NewSolidFootage, new_solid>;
    s.AEGP_AddFootageToProject = slot<&Suite::AEGP_AddFootageToProject, add_to_project>;
    s.AEGP_DisposeFootage = slot<&Suite::AEGP_DisposeFootage, dispose>;
    s.AEGP_GetFootageInterpretation = slot<&Suite::AEGP_GetFootageInterpretation, interpretation_of>;
    s.AEGP_SetFootageInterpretation = slot<&Suite::AEGP_SetFootageInterpretation, set_interpretation>;
    return s;
}

}  // namespace host::suites
