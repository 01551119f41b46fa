#include "engine/ooxml/VmlPath.h"

#include "engine/ooxml/DrawingXml.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <string_view>

namespace wordbm::ooxml {

namespace {

constexpr double AngleUnit = 60000.0;
constexpr double RadiansPerDegree = std::numbers::pi / 180.0;

std::optional<double> literal(pugi::xml_node node, const char* attribute) {
    constexpr std::int64_t NotNumber = std::numeric_limits<std::int64_t>::min();
    const std::int64_t value = drawingXml::integer(node, attribute, NotNumber);
    return value == NotNumber ? std::nullopt : std::optional<double>(static_cast<double>(value));
}

// DrawingML angles are visual angles on the ellipse; Bézier arcs need the parameter angle.
double parameter(double visual, double radiusX, double radiusY) {
    return std::atan2(radiusX * std::sin(visual), radiusY * std::cos(visual));
}

} // namespace

VmlPath::VmlPath(double width, double height, std::string& out)
    : scaleX_(CoordinateSize / width), scaleY_(CoordinateSize / height), out_(out) {}

bool VmlPath::write(pugi::xml_node path) {
    for (const pugi::xml_node command : path.children()) {
        if (command.type() == pugi::node_element && !writeCommand(command)) {
            return false;
        }
    }
    return true;
}

bool VmlPath::writeCommand(pugi::xml_node command) {
    const std::string_view kind = drawingXml::localName(command);
    if (kind == "close") {
        out_ += 'x';
        current_ = start_;
        return true;
    }
    if (kind == "arcTo") {
        return arc(command);
    }
    std::vector<Point> points;
    for (const pugi::xml_node pt : command.children("a:pt")) {
        const auto x = literal(pt, "x");
        const auto y = literal(pt, "y");
        if (!x || !y) {
            return false;
        }
        points.push_back({*x, *y});
    }
    return emit(kind, points);
}

bool VmlPath::emit(std::string_view kind, const std::vector<Point>& points) {
    if (kind == "moveTo" && points.size() == 1) {
        out_ += 'm';
        add(points[0]);
        start_ = points[0];
    } else if (kind == "lnTo" && points.size() == 1) {
        out_ += 'l';
        add(points[0]);
    } else if (kind == "cubicBezTo" && points.size() == 3) {
        cubic(points[0], points[1], points[2]);
    } else if (kind == "quadBezTo" && points.size() == 2) {
        // VML has no quadratic curve; the cubic with controls two thirds of the way is the same curve.
        const Point& control = points[0];
        const Point& end = points[1];
        cubic({current_.x + 2.0 / 3.0 * (control.x - current_.x),
               current_.y + 2.0 / 3.0 * (control.y - current_.y)},
              {end.x + 2.0 / 3.0 * (control.x - end.x), end.y + 2.0 / 3.0 * (control.y - end.y)}, end);
    } else {
        return false;
    }
    current_ = points.back();
    return true;
}

void VmlPath::cubic(const Point& first, const Point& second, const Point& end) {
    out_ += 'c';
    add(first);
    out_ += ',';
    add(second);
    out_ += ',';
    add(end);
    current_ = end;
}

bool VmlPath::arc(pugi::xml_node command) {
    const auto radiusX = literal(command, "wR");
    const auto radiusY = literal(command, "hR");
    const auto start = literal(command, "stAng");
    const auto sweep = literal(command, "swAng");
    if (!radiusX || !radiusY || !start || !sweep) {
        return false;
    }
    const double startVisual = *start / AngleUnit * RadiansPerDegree;
    const double sweepVisual = *sweep / AngleUnit * RadiansPerDegree;
    const double from = parameter(startVisual, *radiusX, *radiusY);
    double turn = parameter(startVisual + sweepVisual, *radiusX, *radiusY) - from;
    if (std::abs(sweepVisual) >= 2.0 * std::numbers::pi) {
        turn = std::copysign(2.0 * std::numbers::pi, sweepVisual);
    } else if (sweepVisual > 0.0 && turn <= 0.0) {
        turn += 2.0 * std::numbers::pi;
    } else if (sweepVisual < 0.0 && turn >= 0.0) {
        turn -= 2.0 * std::numbers::pi;
    }
    const Point centre{current_.x - *radiusX * std::cos(from), current_.y - *radiusY * std::sin(from)};
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(turn) / (std::numbers::pi / 2.0))));
    const double step = turn / pieces;
    const double handle = 4.0 / 3.0 * std::tan(step / 4.0);
    for (int piece = 0; piece < pieces; ++piece) {
        const double a = from + step * piece;
        const double b = a + step;
        const Point p0{centre.x + *radiusX * std::cos(a), centre.y + *radiusY * std::sin(a)};
        const Point p3{centre.x + *radiusX * std::cos(b), centre.y + *radiusY * std::sin(b)};
        cubic({p0.x - handle * *radiusX * std::sin(a), p0.y + handle * *radiusY * std::cos(a)},
              {p3.x + handle * *radiusX * std::sin(b), p3.y - handle * *radiusY * std::cos(b)}, p3);
    }
    return true;
}

void VmlPath::add(const Point& point) {
    out_ += std::to_string(std::llround(point.x * scaleX_));
    out_ += ',';
    out_ += std::to_string(std::llround(point.y * scaleY_));
}

std::optional<std::string> VmlPath::fromCustomGeometry(pugi::xml_node customGeometry, std::int64_t width,
                                                       std::int64_t height) {
    std::string out;
    for (const pugi::xml_node path : customGeometry.child("a:pathLst").children("a:path")) {
        // A path without its own size is drawn in the shape's coordinates.
        const std::int64_t ownWidth = drawingXml::integer(path, "w");
        const std::int64_t ownHeight = drawingXml::integer(path, "h");
        const auto pathWidth = static_cast<double>(ownWidth > 0 ? ownWidth : width);
        const auto pathHeight = static_cast<double>(ownHeight > 0 ? ownHeight : height);
        if (pathWidth <= 0.0 || pathHeight <= 0.0) {
            continue;
        }
        if (std::string_view(path.attribute("fill").value()) == "none") {
            out += "nf";
        }
        const std::string_view stroke = path.attribute("stroke").value();
        if (stroke == "0" || stroke == "false") {
            out += "ns";
        }
        VmlPath writer(pathWidth, pathHeight, out);
        if (!writer.write(path)) {
            return std::nullopt;
        }
        out += 'e';
    }
    if (out.empty()) {
        return std::nullopt;
    }
    return out;
}

} // namespace wordbm::ooxml
