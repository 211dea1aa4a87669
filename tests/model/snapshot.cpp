// All that can be seen of a project.
#include "snapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace host::model::testing {
namespace {

std::vector<LayerId> sorted_ids(const std::vector<Layer*>& layers) {
    std::vector<LayerId> ids;
    for (const Layer* layer : layers) ids.push_back(layer->id());
    std::sort(ids.begin(), ids.end());
    return ids;
}

void put(std::ostream& out, const char* title, const std::vector<LayerId>& ids) {
    out << " " << title << "[";
    for (const LayerId id : ids) out << id << ",";
    out << "]";
}

void put(std::ostream& out, const Stream& stream) {
    out << &stream.data() << (stream.expression_state() ? "e" : "") << (stream.is_expression_broken() ? "b" : "");
}

std::string line_of(Layer& layer) {
    std::ostringstream out;
    out << "  layer " << &layer << " #" << layer.id() << " '" << layer.own_name() << "' '" << layer.display_name()
        << "' flags " << layer.flags() << " parent " << layer.parent() << " matte " << layer.matte() << "/"
        << static_cast<int>(layer.matte_type()) << " time " << layer.offset().ticks << " " << layer.in_point().ticks
        << " " << layer.duration().ticks << " " << layer.stretch();
    put(out, "children", sorted_ids(layer.children()));
    put(out, "matte users", sorted_ids(layer.matte_users()));
    const std::size_t effects = layer.effect_count();
    for (int number = 0; number < kLayerStreamCount; ++number) {
        const Stream* stream = layer.existing_stream(number);
        if (stream == nullptr || (!stream->is_changed() && !stream->has_expression())) continue;
        out << " s" << number << "=";
        put(out, *stream);
    }
    for (std::size_t i = 0; i < effects; ++i) {
        const Effect& effect = layer.effect(i);
        out << " effect " << &effect << " '" << effect.name() << "' " << effect.flags();
        for (std::size_t p = 0; p < effect.parameter_count(); ++p) {
            out << " ";
            put(out, effect.parameter(p));
        }
    }
    for (const auto& stream : layer.other_streams()) {
        out << " other ";
        put(out, *stream);
    }
    return out.str();
}

}  // namespace

std::vector<std::string> snapshot(const Project& project) {
    std::vector<std::string> lines;
    for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item)) {
        std::ostringstream out;
        out << "item " << item << " #" << item->id() << " '" << item->name() << "' in " << item->parent_folder()
            << " aspect " << item->pixel_aspect().num << "/" << item->pixel_aspect().den;
        put(out, "users", sorted_ids(item->users()));
        Comp* comp = item->comp();
        if (comp != nullptr) {
            out << " selected";
            for (const Layer* layer : comp->selected_layers()) out << " " << layer->id();
        }
        lines.push_back(out.str());
        if (comp == nullptr) continue;
        for (int i = 0; i < comp->layer_count(); ++i) lines.push_back(line_of(comp->layer_at(i)));
    }
    return lines;
}

void expect_consistent(const Project& project) {
    int number = 0;
    std::map<const Item*, std::vector<LayerId>> users;
    for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item), ++number) {
        ASSERT_TRUE(item->is_alive());
        ASSERT_EQ(project.number_of(*item), number);
        ASSERT_EQ(project.item_by_id(item->id()), item);
        Comp* comp = item->comp();
        if (comp == nullptr) continue;
        std::map<std::string, Layer*> topmost;
        std::map<const Layer*, std::vector<LayerId>> children;
        std::map<const Layer*, std::vector<LayerId>> matte_users;
        for (int i = 0; i < comp->layer_count(); ++i) {
            Layer& layer = comp->layer_at(i);
            ASSERT_TRUE(layer.is_alive());
            ASSERT_EQ(layer.index(), i);
            ASSERT_EQ(project.layer_by_id(layer.id()), &layer);
            topmost.emplace(layer.display_name(), &layer);
            users[layer.source()].push_back(layer.id());
            if (layer.parent() != nullptr) {
                ASSERT_TRUE(layer.parent()->is_alive());
                children[layer.parent()].push_back(layer.id());
            }
            if (layer.matte() != nullptr) {
                ASSERT_TRUE(layer.matte()->is_alive());
                matte_users[layer.matte()].push_back(layer.id());
            }
        }
        for (Layer* layer : comp->stack().to_vector()) {
            ASSERT_EQ(comp->layer_named(layer->display_name()), topmost.at(layer->display_name()));
            std::sort(children[layer].begin(), children[layer].end());
            std::sort(matte_users[layer].begin(), matte_users[layer].end());
            ASSERT_EQ(sorted_ids(layer->children()), children[layer]);
            ASSERT_EQ(sorted_ids(layer->matte_users()), matte_users[layer]);
        }
        for (const Layer* layer : comp->selected_layers()) ASSERT_TRUE(layer->is_alive());
    }
    for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item)) {
        std::sort(users[item].begin(), users[item].end());
        ASSERT_EQ(sorted_ids(item->users()), users[item]);
    }
}

}  // namespace host::model::testing
