// Layers of an animation at any frame, as the audit evaluates them: for those who say the same in another way.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lottie::looks {

struct PlanePoint {
    double x = 0;
    double y = 0;
};

// Where points of the plane come to lie.
struct PlaneMap {
    PlanePoint origin;       // of (0, 0)
    PlanePoint right{1, 0};  // from there to where (1, 0) comes to lie
    PlanePoint down{0, 1};   // likewise (0, 1)

    PlanePoint map(PlanePoint p) const;
    PlanePoint turn(PlanePoint arrow) const;  // without the origin
    PlaneMap then(const PlaneMap& next) const;
    std::optional<PlaneMap> inverse() const;  // nothing for a map onto a line or point
};

class MovingPath;
struct Scene;
class Survey;
class Surveys;
class Work;

// Judge::evaluation() makes it.
class Evaluation {
  public:
    // Compositions are told by asset id, "" being the main one, layers by their place in the stack, 0 = top.

    // Whole frames that players show of the composition from one frame up to but not at another.
    std::vector<double> frames(const std::string& composition, double from, double to) const;
    // The frame of its composition that a nest shows; expressions of its time remapping left aside.
    double inner_frame(const std::string& composition, std::size_t nest, double frame) const;

    // From a layer's own coordinates to those of its composition, parents included.
    PlaneMap place(const std::string& composition, std::size_t layer, double frame);
    bool moves(const std::string& composition, std::size_t layer);
    // Whether place() says all: no expression moves it or what it hangs on, and none of them leaves the plane.
    bool has_reliable_placement(const std::string& composition, std::size_t layer);
    // Whether an expression alone places it, and gives the same whatever value the position holds.
    bool is_placed_by_expression(const std::string& composition, std::size_t layer);
    // How far a layer's picture may reach in its composition: the corners around it; none when nothing is seen then.
    std::vector<PlanePoint> reach(const std::string& composition, std::size_t layer, double frame);
    // All that expressions may make of it at any of the frames, as corners; none for a layer that they leave alone,
    // nothing where that cannot be told.
    std::optional<std::vector<PlanePoint>> led_reach(const std::string& composition, std::size_t layer,
                                                     const std::vector<double>& frames);
    // Whether two layers are seen at a frame, and so near that their pictures may lie over one another.
    bool may_overlap(const std::string& composition, std::size_t a, std::size_t b, double frame);
    // Whether a nest covers so much of the picture at a frame that its layers cannot fade one by one there.
    bool is_large_fade(const std::string& composition, std::size_t nest, double frame);
    bool is_on(const std::string& composition, std::size_t layer, double frame);
    // Percent, its own alone; expressions left aside.
    double opacity(const std::string& composition, std::size_t layer, double frame);
    double width(const std::string& composition);  // pixels

    struct Outline {
        std::string path;  // JSON of a path property
        PlaneMap place;    // from its coordinates to the layer's
        bool is_closed = true;
    };
    // Of a layer whose picture is one opaque area within a hard edge; nothing for others.
    std::optional<Outline> only_outline(const std::string& composition, std::size_t layer);
    struct Area {
        std::shared_ptr<const MovingPath> path;
        PlaneMap place;  // from its coordinates to the layer's
    };
    // The areas of a layer that draws nothing else, whatever its own opacity; none for others.
    std::vector<Area> areas_at_any_opacity(const std::string& composition, std::size_t layer);

  private:
    friend class Judge;
    Evaluation(const Scene& scene, Surveys& surveys, Work& work) : scene_(scene), surveys_(surveys), work_(work) {}
    Survey& survey(const std::string& composition) const;

    const Scene& scene_;
    Surveys& surveys_;
    Work& work_;
};

// A path over time, such as a mask's.
class MovingPath {
  public:
    struct Vertices {
        std::vector<PlanePoint> at, in, out;  // the handles relative to their vertices
        bool is_closed = false;
    };

    // The JSON of the property.
    explicit MovingPath(std::string_view property);
    ~MovingPath();

    Vertices at(double frame) const;

  private:
    friend class Evaluation;
    struct State;
    explicit MovingPath(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace lottie::looks
