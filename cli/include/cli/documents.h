// Animations from files and back, every trouble being a Failure.
#pragma once

#include <string>

#include "cli/file_io.h"
#include "document/document.h"

namespace cli {

// A file's name in sentences; "standard input" for "-".
std::string shown_name(const std::string& file);

// The file's bytes. Throws Failure (bad input).
std::string read_input(const std::string& file);

// Throws Failure (bad input, with its place).
lottie::document::Document parse_input(std::string text);

// Throws Failure (bad input, with its place) if a fault inside some layer was met: a run may have passed over it.
void refuse_faulty_content(const lottie::document::Document& document);

// The folder for results, made if it is missing. Throws Failure (failed).
void prepare_folder(const std::string& folder);

// Writes the whole result or nothing; "-" is standard output. Throws Failure (failed).
void write_result(const std::string& output, Pieces bytes);

}  // namespace cli
