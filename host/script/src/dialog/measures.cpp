// Sizes, margins and bounds of elements: script objects whose named numbers write through to the element, so that
// `element.preferredSize.width = 250` works.
#include <algorithm>
#include <array>

#include "dialog/dialog_classes.h"

namespace host::script {

namespace {

template <std::size_t N>
duk_ret_t number(ScriptCall& call);
template <std::size_t N>
duk_ret_t set_number(ScriptCall& call);

template <std::size_t N>
constexpr ScriptProperty named(const char* name) {
    return {name, guarded<number<N>>, guarded<set_number<N>>};
}

constexpr ScriptProperty kDimension[] = {named<0>("width"), named<1>("height"), named<0>("0"), named<1>("1")};
constexpr ScriptProperty kPoint[] = {named<0>("x"), named<1>("y"), named<0>("0"), named<1>("1")};
constexpr ScriptProperty kEdges[] = {
    named<0>("left"), named<1>("top"), named<2>("right"), named<3>("bottom"),
    named<0>("0"),    named<1>("1"),   named<2>("2"),     named<3>("3"),
};

constexpr ScriptClass kClasses[] = {
    {ClassId::dimension, nullptr, {}, nullptr, {}, kDimension},
    {ClassId::point, nullptr, {}, nullptr, {}, kPoint},
    {ClassId::edges, nullptr, {}, nullptr, {}, kEdges},
};

using Numbers = std::array<double, 4>;

// As scripts name them, by number.
constexpr const char* kNames[] = {"preferredSize", "minimumSize", "maximumSize", "size",
                                  "location",      "bounds",      "margins"};

std::size_t count_of(Measure measure) {
    return measure == Measure::bounds || measure == Measure::margins ? 4 : 2;
}

ClassId class_of(Measure measure) {
    if (count_of(measure) == 4) return ClassId::edges;
    return measure == Measure::location ? ClassId::point : ClassId::dimension;
}

// Empty until a script or the layout has set it.
std::optional<Numbers> read(const scriptui::Element& element, Measure measure) {
    const scriptui::Layout& layout = element.layout();
    const auto& frame = element.frame();
    const auto pair = [](const std::array<double, 2>& two) { return Numbers{two[0], two[1], 0, 0}; };
    switch (measure) {
        case Measure::preferred_size:
            return pair(layout.preferred_size);
        case Measure::minimum_size:
            return pair(layout.minimum_size);
        case Measure::maximum_size:
            return pair(layout.maximum_size);
        case Measure::size:
            if (frame) return Numbers{frame->width, frame->height, 0, 0};
            return layout.size ? std::optional(pair(*layout.size)) : std::nullopt;
        case Measure::location:
            if (frame) return Numbers{frame->left, frame->top, 0, 0};
            return layout.location ? std::optional(pair(*layout.location)) : std::nullopt;
        case Measure::margins:
            return layout.margins;
        case Measure::bounds:
            break;
    }
    const auto size = read(element, Measure::size);
    const auto location = read(element, Measure::location);
    if (!size || !location) return {};
    return Numbers{(*location)[0], (*location)[1], (*location)[0] + (*size)[0], (*location)[1] + (*size)[1]};
}

// Moves and resizes the element if it has been laid out; other elements stay where they are.
void write(scriptui::Element& element, Measure measure, const Numbers& n) {
    scriptui::Layout& layout = element.layout();
    switch (measure) {
        case Measure::preferred_size:
            layout.preferred_size = {n[0], n[1]};
            break;
        case Measure::minimum_size:
            layout.minimum_size = {n[0], n[1]};
            break;
        case Measure::maximum_size:
            layout.maximum_size = {n[0], n[1]};
            break;
        case Measure::size:
            layout.size = {n[0], n[1]};
            break;
        case Measure::location:
            layout.location = {n[0], n[1]};
            break;
        case Measure::margins:
            layout.margins = n;
            break;
        case Measure::bounds:
            layout.location = {n[0], n[1]};
            layout.size = {n[2] - n[0], n[3] - n[1]};
            break;
    }
    if (!element.frame()) return;
    const auto [left, top] = layout.location.value_or(std::array{element.frame()->left, element.frame()->top});
    const auto [width, height] = layout.size.value_or(std::array{element.frame()->width, element.frame()->height});
    element.set_frame(scriptui::Frame{left, top, width, height});
}

constexpr const char* kElement = DUK_HIDDEN_SYMBOL("element");
constexpr const char* kMeasure = DUK_HIDDEN_SYMBOL("measure");

// What `this` writes through to.
struct View {
    scriptui::Element& element;
    Measure measure;
};

View self_view(ScriptCall& call) {
    duk_push_this(call.ctx);
    if (!duk_is_object(call.ctx, -1)) call.fail("called on something that is not a measure");
    duk_get_prop_string(call.ctx, -1, kElement);
    scriptui::Element* element = element_argument(call, -1);
    if (element == nullptr) call.fail("called on something that is not a measure");
    duk_get_prop_string(call.ctx, -2, kMeasure);
    return {*element, static_cast<Measure>(duk_get_int(call.ctx, -1))};
}

template <std::size_t N>
duk_ret_t number(ScriptCall& call) {
    const View view = self_view(call);
    return call.give(read(view.element, view.measure).value_or(Numbers{})[N]);
}

template <std::size_t N>
duk_ret_t set_number(ScriptCall& call) {
    const double value = call.number(0);
    const View view = self_view(call);
    Numbers numbers = read(view.element, view.measure).value_or(Numbers{});
    numbers[N] = value;
    write(view.element, view.measure, numbers);
    return call.nothing();
}

// The numbers with these names, if the object at `i` has all of them.
std::optional<Numbers> named_numbers(ScriptCall& call, duk_idx_t i, std::initializer_list<const char*> names) {
    Numbers numbers{};
    std::size_t n = 0;
    for (const char* name : names) {
        if (!duk_get_prop_string(call.ctx, i, name)) return {};
        numbers[n++] = call.number(-1);
        duk_pop(call.ctx);
    }
    return numbers;
}

std::optional<Numbers> numbers_argument(ScriptCall& call, duk_idx_t i, Measure measure) {
    if (measure == Measure::margins && duk_is_number(call.ctx, i)) {
        Numbers same;
        same.fill(call.number(i));
        return same;
    }
    if (!duk_is_object(call.ctx, i)) return {};
    const std::size_t count = count_of(measure);
    if (duk_is_array(call.ctx, i)) {
        if (duk_get_length(call.ctx, i) != count) return {};
        return count == 4 ? named_numbers(call, i, {"0", "1", "2", "3"}) : named_numbers(call, i, {"0", "1"});
    }
    if (count == 2) {
        return measure == Measure::location ? named_numbers(call, i, {"x", "y"})
                                            : named_numbers(call, i, {"width", "height"});
    }
    if (const auto edges = named_numbers(call, i, {"left", "top", "right", "bottom"})) return edges;
    if (measure != Measure::bounds) return {};
    const auto box = named_numbers(call, i, {"x", "y", "width", "height"});
    if (!box) return {};
    return Numbers{(*box)[0], (*box)[1], (*box)[0] + (*box)[2], (*box)[1] + (*box)[3]};
}

}  // namespace

duk_ret_t get_measure(ScriptCall& call, Measure measure) {
    const scriptui::Element& element = call.self_element();
    if (!read(element, measure)) return call.nothing();
    const duk_idx_t view = duk_push_object(call.ctx);
    push_element(call, &element);
    duk_put_prop_string(call.ctx, view, kElement);
    duk_push_int(call.ctx, static_cast<int>(measure));
    duk_put_prop_string(call.ctx, view, kMeasure);
    call.environment.push_prototype(call.ctx, class_of(measure));
    duk_set_prototype(call.ctx, view);
    return 1;
}

duk_ret_t set_measure(ScriptCall& call, Measure measure) {
    scriptui::Element& element = call.self_element();
    const auto numbers = numbers_argument(call, 0, measure);
    if (!numbers) call.fail(std::string(kNames[static_cast<int>(measure)]) + " cannot be read from that value");
    write(element, measure, *numbers);
    return call.nothing();
}

std::array<double, 4> bounds_argument(ScriptCall& call, duk_idx_t i) {
    const auto bounds = numbers_argument(call, i, Measure::bounds);
    if (!bounds) call.fail("bounds cannot be read from that value");
    return *bounds;
}

void define_measures(duk_context* ctx) {
    for (const ScriptClass& table : kClasses) ScriptEnvironment::of(ctx).define_class(ctx, table);
}

}  // namespace host::script
