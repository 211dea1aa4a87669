// Work with the renderer in a process of its own.
#include "pictures/drawing_process.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "base/child_process.h"

namespace lottie::pictures {
namespace {

using host::base::ChildProcess;
using host::base::ProcessEnd;

constexpr int kDone = 0;
constexpr int kThrew = 1;

// The renderer opens pictures that an animation names by their paths, but for those inside it needs a module of its own.
void open_no_more_files(const ChildProcess::Parent& parent) {
    const Animation with_a_picture(
        R"({"v":"5","fr":1,"ip":0,"op":1,"w":1,"h":1,"layers":[],"assets":[{"id":"0","w":1,"h":1,"u":"","e":1,)"
        R"("p":"data:image/gif;base64,R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7"}]})");
    (void)with_a_picture.frame(0, 1, 1);  // it asks for the number of processors too
    parent.open_no_more_files();
}

int work_in_child(const std::function<std::string()>& work, const ChildProcess::Parent& parent) {
    try {
        open_no_more_files(parent);
        parent.say(work());
        return kDone;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        parent.say(error.what());
        return kThrew;
    }
}

// Why there is nothing to take.
[[noreturn]] void refuse(const ProcessEnd& end, std::chrono::seconds limit, std::size_t memory) {
    switch (end.kind) {
        case ProcessEnd::Kind::out_of_processor_time:
            throw std::runtime_error("the renderer did not come to an end within " + std::to_string(limit.count()) +
                                     " s of the processor's time");
        case ProcessEnd::Kind::out_of_time:
            throw std::runtime_error("the renderer stood still");
        case ProcessEnd::Kind::out_of_memory:
            throw std::runtime_error("the renderer wanted more than " + std::to_string(memory >> 20) + " MB of memory");
        default:
            throw std::runtime_error("the renderer " + in_words(end));
    }
}

// The bytes of plain things, one behind the other.
template <class T>
void put(std::string& bytes, const T& thing) {
    static_assert(std::is_trivially_copyable_v<T>);
    bytes.append(reinterpret_cast<const char*>(&thing), sizeof thing);
}

void put(std::string& bytes, const Picture& picture) {
    put(bytes, picture.width);
    put(bytes, picture.height);
    bytes.append(reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size() * sizeof(std::uint32_t));
}

class Taker {
  public:
    explicit Taker(const std::string& bytes) : bytes_(bytes) {}

    template <class T>
    T take() {
        static_assert(std::is_trivially_copyable_v<T>);
        T thing;
        take_bytes(&thing, sizeof thing);
        return thing;
    }

    Picture take_picture() {
        const int width = take<int>();
        const int height = take<int>();
        Picture picture(width, height);
        take_bytes(picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t));
        return picture;
    }

  private:
    void take_bytes(void* to, std::size_t count) {
        if (count > bytes_.size() - at_) throw std::runtime_error("the renderer's pictures were cut short");
        std::memcpy(to, bytes_.data() + at_, count);
        at_ += count;
    }

    const std::string& bytes_;
    std::size_t at_ = 0;
};

std::string packed(const PictureComparison& comparison) {
    std::string bytes;
    put(bytes, comparison.frames);
    put(bytes, comparison.worst_frame);
    put(bytes, comparison.worst);
    put(bytes, comparison.looks_equal);
    put(bytes, comparison.worst_before);
    put(bytes, comparison.worst_after);
    return bytes;
}

PictureComparison unpacked(const std::string& bytes) {
    Taker taker(bytes);
    PictureComparison comparison;
    comparison.frames = taker.take<int>();
    comparison.worst_frame = taker.take<int>();
    comparison.worst = taker.take<Difference>();
    comparison.looks_equal = taker.take<bool>();
    comparison.worst_before = taker.take_picture();
    comparison.worst_after = taker.take_picture();
    return comparison;
}

}  // namespace

std::string run_in_child(const std::function<std::string()>& work, DrawingBudget& budget) try {
    if (budget.time.count() <= 0) throw std::runtime_error("the time for pictures is used up");
    const auto limit = std::chrono::ceil<std::chrono::seconds>(budget.time);
    ChildProcess child([&](const ChildProcess::Parent& parent) { return work_in_child(work, parent); },
                       {.processor_time = limit, .time = 3 * limit, .memory = budget.memory},
                       ChildProcess::Streams::nowhere);
    const ProcessEnd& end = child.wait();
    const bool is_late =
        end.kind == ProcessEnd::Kind::out_of_processor_time || end.kind == ProcessEnd::Kind::out_of_time;
    budget.time -= is_late ? budget.time : std::min(budget.time, end.processor_time);
    if (end.kind != ProcessEnd::Kind::finished) refuse(end, limit, budget.memory);
    if (end.number == kThrew) throw std::runtime_error(child.said());
    return std::move(child.said());
} catch (const host::base::NoProcess& reason) {
    throw std::runtime_error(std::string("no process for the renderer can be started: ") + reason.what());
}

PictureComparison compare_in_child(const std::string& before, const std::string& after, const std::vector<int>& look_at,
                                   DrawingBudget& budget) {
    return unpacked(
        run_in_child([&] { return packed(compare(Animation(before), Animation(after), look_at)); }, budget));
}

}  // namespace lottie::pictures
