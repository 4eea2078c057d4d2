#include "display/shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hullrider {

namespace {

// Not std::hypot: its guard against overflow costs more than the rest of a shape.
float Length(float x, float y) {
    return std::sqrt(x * x + y * y);
}

}  // namespace

float DistanceToBox(Point p, const Box& box, float cornerRadius) {
    const float halfWidth = box.width / 2.0F;
    const float halfHeight = box.height / 2.0F;
    const float dx = std::abs(p.x - box.x - halfWidth) - halfWidth + cornerRadius;
    const float dy = std::abs(p.y - box.y - halfHeight) - halfHeight + cornerRadius;
    const float outside = Length(std::max(dx, 0.0F), std::max(dy, 0.0F));
    return outside + std::min(std::max(dx, dy), 0.0F) - cornerRadius;
}

float DistanceToCircle(Point p, Point center, float radius) {
    return Length(p.x - center.x, p.y - center.y) - radius;
}

float DistanceToStroke(Point p, Point from, Point to, float width) {
    const Point line{to.x - from.x, to.y - from.y};
    const Point toP{p.x - from.x, p.y - from.y};
    const float squared = std::max(line.x * line.x + line.y * line.y, 1e-9F);
    const float along = std::clamp((toP.x * line.x + toP.y * line.y) / squared, 0.0F, 1.0F);
    return Length(toP.x - line.x * along, toP.y - line.y * along) - width / 2.0F;
}

float DistanceToPolygon(Point p, std::span<const Point> corners) {
    float squared = std::numeric_limits<float>::max();
    bool inside = false;
    for (size_t i = 0; i < corners.size(); ++i) {
        const Point a = corners[i];
        const Point b = corners[(i + 1) % corners.size()];
        const float edge = DistanceToStroke(p, a, b, 0.0F);
        squared = std::min(squared, edge * edge);
        const bool crosses = (a.y > p.y) != (b.y > p.y);
        if (crosses && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
    }
    return inside ? -std::sqrt(squared) : std::sqrt(squared);
}

float DistanceToArc(Point p, Point center, float radius, float fromAngle, float toAngle, float width) {
    constexpr float kTurn = 6.2831853F;
    const float angle = std::atan2(p.x - center.x, center.y - p.y);
    const float past = angle - fromAngle - kTurn * std::floor((angle - fromAngle) / kTurn);
    if (past <= toAngle - fromAngle) {
        return std::abs(Length(p.x - center.x, p.y - center.y) - radius) - width / 2.0F;
    }
    const Point from = OnCircle(center, radius, fromAngle);
    const Point to = OnCircle(center, radius, toAngle);
    return std::min(Length(p.x - from.x, p.y - from.y), Length(p.x - to.x, p.y - to.y)) - width / 2.0F;
}

Point OnCircle(Point center, float radius, float angle) {
    return {center.x + radius * std::sin(angle), center.y - radius * std::cos(angle)};
}

}  // namespace hullrider
