// Animations from files, plain or packed, and back.
#include "cli/shared/animation_file.h"

#include <algorithm>
#include <utility>

#include "base/files.h"
#include "cli/shared/failure.h"
#include "cli/shared/suggestions.h"
#include "document/input_error.h"

namespace cli {

using host::base::FileError;
using lottie::document::OutputText;
using lottie::packed::Archive;
using lottie::packed::ArchiveError;
using lottie::packed::Form;

AnimationFile::AnimationFile(const std::string& file, const std::string& id) : name_(shown_name(file)) {
    std::string bytes = read_input(file);
    byte_count_ = bytes.size();
    if (!Archive::is_archive(bytes)) {
        plain_ = std::move(bytes);
    } else {
        try {
            archive_ = Archive::read(std::move(bytes));
        } catch (const ArchiveError& error) {
            throw Failure(ExitCode::bad_input, error.what(),
                          error.entry().empty() ? "" : ':' + printable(error.entry()));
        }
    }
    choose(id);
}

void AnimationFile::choose(const std::string& id) {
    if (!is_collection()) {
        if (!id.empty()) throw Failure(ExitCode::usage, "is not a .lottie file: leave out --animation");
        chosen_.push_back(0);
        return;
    }
    std::vector<std::string> ids;
    for (const auto& animation : archive_->animations()) {
        if (id.empty() || animation.id == id) chosen_.push_back(ids.size());
        ids.push_back(animation.id);
    }
    if (!chosen_.empty()) return;
    throw Failure(ExitCode::usage,
                  "there is no animation " + in_quotes(id) + did_you_mean(id, ids) + " (exflate list shows them all)");
}

std::optional<Form> AnimationFile::form() const {
    if (!archive_) return std::nullopt;
    return archive_->form();
}

const std::string& AnimationFile::text(std::size_t i) const {
    return archive_ ? packed(i).text : plain_;
}

std::string AnimationFile::take_text(std::size_t i) {
    if (archive_) return packed(i).text;
    return std::move(plain_);
}

std::string AnimationFile::id(std::size_t i) const {
    return archive_ ? packed(i).id : "";
}

std::string AnimationFile::place(std::size_t i) const {
    return is_collection() ? ':' + printable(packed(i).entry) : "";
}

const lottie::packed::References& AnimationFile::references() const {
    static const lottie::packed::References nothing;
    return archive_ ? archive_->references() : nothing;
}

CurrentNames AnimationFile::names_in_others() const {
    CurrentNames names;
    if (!archive_) return names;
    for (std::size_t i = 0; i < archive_->animations().size(); ++i) {
        if (std::find(chosen_.begin(), chosen_.end(), i) != chosen_.end()) continue;
        try {
            names.merge(names_in(parse_input(archive_->animations()[i].text).text(), archive_->references()));
        } catch (const Failure&) {
            continue;  // neither an animation nor anything that players could show
        }
    }
    return names;
}

OutputText AnimationFile::with(std::vector<OutputText> texts,
                               const std::map<std::string, std::string>& layer_names) const {
    if (!archive_) return std::move(texts.front());
    std::vector<std::string> all;
    for (const auto& animation : archive_->animations()) all.push_back(animation.text);
    for (std::size_t i = 0; i < chosen_.size(); ++i) all[chosen_[i]] = texts[i].text();
    try {
        OutputText packed;
        packed.append(archive_->write(all, layer_names));
        return packed;
    } catch (const ArchiveError& error) {
        throw Failure(ExitCode::failed, error.what());
    }
}

std::string shown_name(const std::string& file) {
    return file == kStandardStream ? "standard input" : file;
}

std::string read_input(const std::string& file) {
    try {
        return read_whole(file);
    } catch (const FileError& error) {
        if (host::base::kind_of(file) == host::base::FileKind::folder)
            throw Failure(ExitCode::bad_input, "is a folder; name a file in it");
        throw Failure(ExitCode::bad_input, error.what());
    }
}

namespace {

Failure bad_input(const lottie::document::InputError& error) {
    return {ExitCode::bad_input, error.what(), "", {error.line(), error.column()}};
}

}  // namespace

void print_warnings(const Console& console, const std::string& label,
                    const std::vector<lottie::document::InputError>& warnings) {
    for (const lottie::document::InputError& warning : warnings) {
        const Failure told = bad_input(warning);
        console.say(Console::Tone::warning, label + told.place(), told.what());
    }
}

namespace {

template <class Read>
auto read_input(Read read) {
    try {
        return read();
    } catch (const lottie::document::InputError& error) {
        throw bad_input(error);
    }
}

}  // namespace

lottie::document::Document parse_input(std::string text) {
    return read_input([&text] { return lottie::document::Document::read(std::move(text)); });
}

lottie::document::Document parse_input(std::string text, lottie::document::DocumentOutline outline) {
    return read_input([&] { return lottie::document::Document::read(std::move(text), std::move(outline)); });
}

void refuse_faulty_content(const lottie::document::Document& document) {
    if (const lottie::document::InputError* fault = document.content_fault()) throw bad_input(*fault);
}

namespace {

template <class Write>
auto write_without_faults(const lottie::document::Document& document, Write write) {
    try {
        auto written = write();
        refuse_faulty_content(document);
        return written;
    } catch (const lottie::document::InputError& error) {
        throw bad_input(error);
    }
}

}  // namespace

lottie::document::OutputText write_animation(const lottie::document::Document& document) {
    return write_without_faults(document, [&] { return document.write_in_pieces(); });
}

lottie::document::WrittenLayers write_layers(const lottie::document::Document& document,
                                             const host::model::Comp& comp) {
    return write_without_faults(document, [&] { return document.write_layers(comp); });
}

void prepare_folder(const std::string& folder) {
    try {
        host::base::make_folder(folder);
    } catch (const FileError& error) {
        throw Failure(ExitCode::failed, "the folder '" + folder + "' " + error.what());
    }
}

void write_result(host::base::Pieces bytes) {
    try {
        host::base::write_standard_output(bytes);
    } catch (const FileError& error) {
        throw Failure(ExitCode::failed, std::string("standard output ") + error.what());
    }
}

void write_result(const Console& console, const std::string& output, host::base::Pieces bytes, bool force) {
    if (output == kStandardStream) return write_result(bytes);
    const std::size_t others = host::base::other_hard_links(output);
    try {
        host::base::replace_file(output, bytes, {.temporary_prefix = ".exflate-", .even_if_read_only = force});
    } catch (const FileError& error) {
        const bool is_read_only = error.reason() == host::base::kReadOnly;
        throw Failure(ExitCode::failed,
                      "'" + output + "' " + error.what() + (is_read_only ? "; --force replaces it all the same" : ""));
    }
    if (others == 0) return;
    console.say(Console::Tone::warning, output,
                "is a file of its own now: it had " + counted(others, "other hard link") +
                    (others == 1 ? ", which keeps" : ", which keep") + " the old content");
}

}  // namespace cli
