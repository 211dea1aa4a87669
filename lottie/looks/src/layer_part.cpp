// A member of a layer that holds more than one value, read when somebody asks for it.
#include "layer_part.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

#include "property.h"

namespace lottie::looks {
namespace {

// Calls visit(object, path) for every object inside, outer ones first.
template <class Visit>
void walk(const Json& value, const std::string& path, Visit& visit) {
    if (value.IsObject()) {
        visit(value, path);
        for (const auto& entry : value.GetObject()) {
            if (!entry.value.IsObject() && !entry.value.IsArray()) continue;
            walk(entry.value, path + "." + std::string(entry.name.GetString(), entry.name.GetStringLength()), visit);
        }
    } else if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            if (!value[i].IsObject() && !value[i].IsArray()) return;
            walk(value[i], path + "[" + std::to_string(i) + "]", visit);
        }
    }
}

}  // namespace

const Json& LayerPart::json() const {
    if (!json_) {
        rapidjson::Document document(&arena_->values);
        document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(text_.data(), text_.size());
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
        auto visit = [this](const Json& object, const std::string& path) {
            const Json* text = member(object, "x");
            if (text == nullptr || !text->IsString()) return;
            expressions_->push_back({path, std::string_view(text->GetString(), text->GetStringLength())});
        };
        walk(json(), key_, visit);
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
    auto visit = [&](const Json& object, const std::string&) {
        if (!is_keyed(object) ||
            std::find(std::begin(dimensions), std::end(dimensions), &object) != std::end(dimensions))
            return;
        const auto keys = array_member(object, "k");
        if (keys.Size() < 2) return;
        for (const Json& key : keys) times.push_back(number_member(key, "t", 0));
    };
    walk(json(), key_, visit);
    return times;
}

}  // namespace lottie::looks
