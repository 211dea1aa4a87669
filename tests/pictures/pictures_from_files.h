// Animations that show a picture, and a trap for those who open it.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "pictures/picture.h"

// A picture in a frame of its size, by the name of its file or as data.
inline std::string with_picture(const std::string& picture, bool is_data, int side) {
    const std::string size = R"("w":)" + std::to_string(side) + R"(,"h":)" + std::to_string(side);
    return R"({"v":"5.7.0","fr":30,"ip":0,"op":10,)" + size + R"(,"ddd":0,"assets":[{"id":"p",)" + size +
           R"(,"u":"","e":)" + (is_data ? "1" : "0") + R"(,"p":")" + picture +
           R"("}],"layers":[{"ddd":0,"ind":1,"ty":2,"nm":"red","refId":"p","sr":1,"ks":{},"ao":0,"ip":0,"op":10,"st":0,)"
           R"("bm":0}]})";
}

// While it lives, a red picture lies where the renderer looks for "red.png": beside the process, with a space before
// its name.
class RedPictureBeside {
  public:
    RedPictureBeside() : before_(std::filesystem::current_path()) {
        std::string folder = (std::filesystem::temp_directory_path() / "pictures-XXXXXX").string();
        if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("no temporary folder can be made");
        std::filesystem::current_path(folder);
        lottie::pictures::write_png(lottie::pictures::Picture(100, 100, 0xffff0000), " red.png");
    }
    ~RedPictureBeside() {
        const auto folder = std::filesystem::current_path();
        std::filesystem::current_path(before_);
        std::filesystem::remove_all(folder);
    }
    RedPictureBeside(const RedPictureBeside&) = delete;

  private:
    std::filesystem::path before_;
};
