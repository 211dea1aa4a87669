// One composition of an animation as an animation of its own.
#include "looks/alone.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <stdexcept>

#include "scene.h"

namespace lottie::looks {
namespace {

const Stack& find(const Scene& scene, std::string_view id) {
    const Stack* stack = scene.find(id);
    if (stack == nullptr) throw std::invalid_argument("the animation has no composition of that id");
    return *stack;
}

}  // namespace

std::string composition_alone(const Animation& animation, std::string_view id) {
    const Scene& scene = animation.scene();
    const Stack& stack = find(scene, id);
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    const auto add_number = [&writer](const char* name, double value) {
        writer.Key(name);
        writer.Int(static_cast<int>(std::ceil(value)));  // some players take whole numbers only
    };
    writer.StartObject();
    for (const auto& entry : scene.document.GetObject()) {
        const std::string_view name(entry.name.GetString(), entry.name.GetStringLength());
        if (!id.empty() && (name == "w" || name == "h" || name == "ip" || name == "op" || name == "layers")) continue;
        writer.Key(entry.name.GetString(), entry.name.GetStringLength());
        entry.value.Accept(writer);
    }
    if (!id.empty()) {
        add_number("w", stack.width);
        add_number("h", stack.height);
        add_number("ip", stack.first_frame);
        add_number("op", stack.end_frame);
        writer.Key("layers");
        member(*scene.asset(id), "layers")->Accept(writer);
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize());
}

double first_frame(const Animation& animation, std::string_view id) {
    return find(animation.scene(), id).first_frame;
}

}  // namespace lottie::looks
