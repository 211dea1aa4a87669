// Projects that are built in memory, and those read from a file.
#pragma once

#include <memory>
#include <string>

#include "dialogs.h"
#include "document/document.h"
#include "validator/situation.h"

namespace validator {

// What the layers show.
enum class Sources { pictures, compositions };

// A project with one composition, "Main", of 640 x 480 pixels and ten seconds at 25 frames a second, which is open and
// empty, and a still picture in the project.
class BuiltStage : public Stage {
  public:
    explicit BuiltStage(Sources sources = Sources::pictures);

    host::model::Project& project() override { return project_; }
    host::model::Comp& main() { return *main_; }
    host::model::Item& picture() { return *picture_; }
    host::model::Comp& add_comp(const std::string& name);
    // A layer above the others; in another composition than the main one it shows the picture.
    host::model::Layer& add_layer(const std::string& name, host::model::Comp* comp = nullptr);
    // An installed effect with a number, a colour, a layer and an entry without data.
    std::shared_ptr<const host::model::EffectKind> install_effect();

  private:
    host::model::Project project_;
    host::model::Comp* main_;
    host::model::Item* picture_;
    host::model::Item* source_;
};

// A situation whose stage the function fills.
Situation built_situation(const char* name, const std::string& sentence, void (*build)(BuiltStage&),
                          const std::vector<Answer>& answers, Sources sources);

class FileStage : public Stage {
  public:
    // The text is an animation that can be read.
    explicit FileStage(const std::string& text) : document_(lottie::document::Document::read(text)) {}

    host::model::Project& project() override { return document_.project(); }
    std::string saved() override { return document_.write(); }
    lottie::document::Document& document() { return document_; }

  private:
    lottie::document::Document document_;
};

}  // namespace validator
