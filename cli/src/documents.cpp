// Animations from files and back, every trouble being a Failure.
#include "cli/documents.h"

#include <utility>

#include "cli/failure.h"
#include "cli/file_io.h"
#include "document/input_error.h"

namespace cli {

std::string shown_name(const std::string& file) {
    return file == kStandardStream ? "standard input" : file;
}

std::string read_input(const std::string& file) {
    try {
        return read_whole(file);
    } catch (const IoError& error) {
        throw Failure(ExitCode::bad_input, error.what());
    }
}

namespace {

Failure bad_input(const lottie::document::InputError& error) {
    std::string place;
    if (error.line() > 0) place = ':' + std::to_string(error.line()) + ':' + std::to_string(error.column());
    return {ExitCode::bad_input, error.what(), std::move(place)};
}

}  // namespace

lottie::document::Document parse_input(std::string text) {
    try {
        return lottie::document::Document::read(std::move(text));
    } catch (const lottie::document::InputError& error) {
        throw bad_input(error);
    }
}

void refuse_faulty_content(const lottie::document::Document& document) {
    if (const lottie::document::InputError* fault = document.content_fault()) throw bad_input(*fault);
}

void prepare_folder(const std::string& folder) {
    try {
        make_folder(folder);
    } catch (const IoError& error) {
        throw Failure(ExitCode::failed, "the folder '" + folder + "' " + error.what());
    }
}

void write_result(const std::string& output, Pieces bytes) {
    try {
        if (output == kStandardStream) {
            write_standard_output(bytes);
        } else {
            put_in_place(output, bytes);
        }
    } catch (const IoError& error) {
        const std::string name = output == kStandardStream ? "standard output" : "'" + output + "'";
        throw Failure(ExitCode::failed, name + ' ' + error.what());
    }
}

}  // namespace cli
