// A member of a layer that holds more than one value, read when somebody asks for it.
#include "layer_part.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "property.h"

namespace lottie::looks {
namespace {

// Calls visit(object) for every object inside, outer ones first.
template <class Visit>
void walk(const Json& value, Visit& visit) {
    if (value.IsObject()) {
        visit(value);
        for (const auto& entry : value.GetObject()) walk(entry.value, visit);
    } else if (value.IsArray()) {
        for (const Json& element : value.GetArray()) {
            if (!element.IsObject() && !element.IsArray()) return;
            walk(element, visit);
        }
    }
}

// The same with the path to each object, which is as it was after each call.
template <class Visit>
void walk_with_path(const Json& value, std::string& path, Visit& visit) {
    const std::size_t length = path.size();
    if (value.IsObject()) {
        visit(value);
        for (const auto& entry : value.GetObject()) {
            if (!entry.value.IsObject() && !entry.value.IsArray()) continue;
            path.append(".").append(entry.name.GetString(), entry.name.GetStringLength());
            walk_with_path(entry.value, path, visit);
            path.resize(length);
        }
    } else if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            if (!value[i].IsObject() && !value[i].IsArray()) return;
            path.append("[").append(std::to_string(i)).append("]");
            walk_with_path(value[i], path, visit);
            path.resize(length);
        }
    }
}

}  // namespace

const Json& LayerPart::json() const {
    if (!json_) {
        constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag |
                                    rapidjson::kParseStopWhenDoneFlag;  // at the bracket that ends the text
        rapidjson::StringStream stream(text_.data());
        JsonDocument document(&arena_->values);
        document.ParseStream<kFlags>(stream);
        if (document.HasParseError()) throw std::runtime_error("the animation cannot be read");
        json_.emplace();
        json_->Swap(document);
    }
    return *json_;
}

const std::vector<Expression>& LayerPart::expressions() const {
    if (!expressions_) {
        expressions_.emplace();
        if (!contents_.expressions) return *expressions_;
        std::string path = key_;
        auto visit = [this, &path](const Json& object) {
            const Json* text = member(object, "x");
            if (text == nullptr || !text->IsString()) return;
            expressions_->push_back({path, std::string_view(text->GetString(), text->GetStringLength())});
        };
        walk_with_path(json(), path, visit);
    }
    return *expressions_;
}

const std::vector<double>& LayerPart::key_times() const {
    if (!key_times_) key_times_ = contents_.keyframes ? key_times_without(Json()) : std::vector<double>();
    return *key_times_;
}

std::vector<double> LayerPart::key_times_without(const Json& left_out) const {
    std::vector<double> times;
    const Json* const dimensions[] = {&left_out, member(left_out, "x"), member(left_out, "y"), member(left_out, "z")};
    auto visit = [&](const Json& object) {
        if (!is_keyed(object) ||
            std::find(std::begin(dimensions), std::end(dimensions), &object) != std::end(dimensions))
            return;
        const auto keys = array_member(object, "k");
        if (keys.Size() < 2) return;
        for (const Json& key : keys) times.push_back(number_member(key, "t", 0));
    };
    walk(json(), visit);
    return times;
}

}  // namespace lottie::looks
