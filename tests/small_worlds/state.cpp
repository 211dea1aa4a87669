// States as text.
#include "state.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace small_worlds {
namespace {

void write_layer(std::ostream& out, const CompState& comp, const LayerState& layer) {
    const bool is_selected = std::find(comp.selected.begin(), comp.selected.end(), layer.id) != comp.selected.end();
    out << (is_selected ? "  * " : "    ") << layer.name;
    if (!layer.source.empty()) out << " = " << layer.source;
    if (layer.parent != kNobody) out << ", child of #" << place_of(comp, layer.parent);
    out << ", " << layer.in << " for " << layer.duration << " from " << layer.offset << ", at " << layer.place[0] << " "
        << layer.place[1] << (layer.is_video_on ? "" : ", off") << (layer.is_3d ? ", 3D" : "")
        << (layer.is_keyed ? ", keyed" : "");
    for (const std::string& effect : layer.effects) out << ", " << effect;
    if (!layer.expression.empty()) out << ", {" << layer.expression << "}";
    out << "\n";
}

}  // namespace

int place_of(const CompState& comp, int id) {
    for (std::size_t i = 0; i < comp.layers.size(); ++i) {
        if (comp.layers[i].id == id) return static_cast<int>(i);
    }
    return -1;
}

CompState& State::comp(const std::string& name) {
    for (CompState& comp : comps) {
        if (comp.name == name) return comp;
    }
    throw std::runtime_error("no composition " + name);
}

std::string State::text() const {
    std::ostringstream out;
    for (const CompState& comp : comps) {
        out << comp.name << "\n";
        for (const LayerState& layer : comp.layers) write_layer(out, comp, layer);
    }
    out << footage << " items of footage\n";
    for (const std::string& alert : alerts) out << "says: " << alert << "\n";
    return out.str();
}

}  // namespace small_worlds
