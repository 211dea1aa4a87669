// A small project to test with, and short ways to say common things.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/error.h"
#include "model/project.h"

namespace host::model::testing {

// One composition of 640 x 480, ten seconds at 25 frames a second, and a still picture.
struct Scene {
    explicit Scene(HostRules rules = {});

    // A layer of the picture with a name of its own, on top, undo forgotten.
    Layer& layer(const std::string& name, Comp* in = nullptr);
    Comp& new_comp(const std::string& name, double seconds = 10);

    Project project;
    Item& picture;
    Comp& comp;
};

Time at(double seconds);
Value value(double a, double b = 0, double c = 0, double d = 0);
Keyframe key(double seconds, const Value& value);
std::vector<std::string> names(const Comp& comp);  // top to bottom
std::vector<std::string> names(const std::vector<Layer*>& layers);

// Content that a function fills in, and that counts how often it was asked for.
struct TestContent : LayerContent {
    explicit TestContent(std::function<void(Layer&)> fill_layer) : fill(std::move(fill_layer)) {}
    void load(Layer& layer) const override {
        ++loads;
        fill(layer);
    }
    bool has_expressions() const override { return expressions; }
    bool has_layer_parameters() const override { return layer_parameters; }

    std::function<void(Layer&)> fill;
    bool expressions = false;
    bool layer_parameters = false;
    mutable int loads = 0;
};

// An installed effect with an input layer, a number, a colour, a layer and an entry without data.
std::shared_ptr<const EffectKind> install_tint(Project& project);
inline constexpr std::size_t kTintNumber = 1;
inline constexpr std::size_t kTintLayer = 3;
inline constexpr std::size_t kTintGroupEnd = 4;

// Runs the code and gives the kind of error that it throws.
template <class Code>
ErrorKind error_of(Code code) {
    try {
        code();
    } catch (const Error& error) {
        EXPECT_STRNE(error.what(), "");
        return error.kind();
    }
    ADD_FAILURE() << "no error was thrown";
    return ErrorKind::unsupported;
}

}  // namespace host::model::testing
