#pragma once

#include <cstdint>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace wordbm::ooxml {

// DrawingML's custom geometry (a:custGeom) as a VML path over a 21600 x 21600 coordinate space,
// so that a freeform keeps its outline in the fallback.
class VmlPath {
public:
    static constexpr int CoordinateSize = 21600;

    // nullopt when a point is given by a guide formula rather than a number (Word writes
    // freeforms with numbers) or when there is no path: the caller then draws a rectangle.
    // `width` and `height` are the shape's extent, which a path without its own size uses.
    static std::optional<std::string> fromCustomGeometry(pugi::xml_node customGeometry, std::int64_t width,
                                                         std::int64_t height);

private:
    struct Point {
        double x = 0.0;
        double y = 0.0;
    };

    // Writes one a:path into `out`, scaled from the path's own size.
    VmlPath(double width, double height, std::string& out);

    bool write(pugi::xml_node path);
    bool writeCommand(pugi::xml_node command);
    bool emit(std::string_view kind, const std::vector<Point>& points);
    bool arc(pugi::xml_node command);
    void cubic(const Point& first, const Point& second, const Point& end);
    void add(const Point& point);

    double scaleX_;
    double scaleY_;
    std::string& out_;
    Point current_;
    Point start_;
};

} // namespace wordbm::ooxml
