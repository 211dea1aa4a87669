// Any bytes as an animation: refused with a sentence, or read, looked into and written again with the very same bytes;
// and what is written after changes can be read.
#include "document/document.h"
#include "harness.h"
#include "model/error.h"

namespace {

using lottie::document::Document;
using lottie::document::InputError;

// Reads what is only read when asked for. A fault inside one layer does not hide the others.
void look_into(host::model::Layer& layer) {
    for (int number = 0; number < host::model::kLayerStreamCount; ++number) {
        if (!layer.is_stream_legal(number)) continue;
        const host::model::Stream& stream = layer.stream(number);
        for (std::size_t i = 0; i < stream.keyframe_count(); ++i) (void)stream.keyframe(i);
    }
    for (std::size_t i = 0; i < layer.effect_count(); ++i) {
        for (std::size_t p = 0; p < layer.effect(i).parameter_count(); ++p) (void)layer.effect(i).parameter(p);
    }
}

void look_into(const Document& document) {
    for (const host::model::Comp* comp : document.project().comps()) {
        for (host::model::Layer* layer : comp->stack().to_vector()) {
            try {
                look_into(*layer);
            } catch (const host::model::Error& error) {
                fuzz::require(*error.what() != '\0', "a fault inside a layer is told");
                fuzz::require(document.content_fault() != nullptr, "a fault inside a layer is remembered");
            }
        }
    }
}

// Changes a little of everything, as far as each layer allows. What is refused has a reason.
void change(const Document& document) {
    host::model::Comp& comp = document.main_comp();
    const auto layers = comp.stack().to_vector();
    for (host::model::Layer* layer : layers) {
        try {
            layer->rename("\"\n");
            layer->set_offset({layer->offset().ticks / 2 - 77});
            layer->set_flag(host::model::kIs3D, !layer->has_flag(host::model::kIs3D));
            layer->stream(host::model::kPosition).set_expression("1");
        } catch (const host::model::Error& error) {
            fuzz::require(*error.what() != '\0', "a refused change says why");
        }
    }
    if (!layers.empty()) comp.copy_layer_here(*layers.back());
}

void expect_readable(std::string text) {
    try {
        (void)Document::read(std::move(text));
    } catch (const InputError& error) {
        fuzz::require(false, error.what());
    }
}

std::optional<Document> read(const std::string& text) {
    try {
        return Document::read(text);
    } catch (const InputError& error) {
        fuzz::require(*error.what() != '\0', "a refusal says why");
        return {};
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::text_of(data, size));
    const std::optional<Document> document = read(text);
    if (!document) return 0;
    fuzz::require(document->write() == text, "what was only read is written unchanged");
    look_into(*document);
    fuzz::require(document->write() == text, "what was looked into is written unchanged");
    if (document->content_fault() != nullptr) return 0;
    change(*document);
    expect_readable(document->write());
    document->project().undo().undo_all();
    fuzz::require(document->write() == text, "what was taken back is written unchanged");
    return 0;
}
