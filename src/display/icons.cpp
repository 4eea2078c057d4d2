#include "display/icons.h"

#include <array>

namespace hullrider {

namespace {

constexpr float kPi = 3.1415927F;

// Draws in units around the icon's own center.
class IconPen {
public:
    IconPen(Coverage& coverage, float scale, Point center) : coverage_(coverage), scale_(scale), center_(center) {}

    void Triangle(Point a, Point b, Point c) const {
        constexpr float kRounding = 0.5F;
        const std::array<Point, 3> corners{a, b, c};
        Add([&](Point p) { return DistanceToPolygon(p, corners) - kRounding; });
    }
    void Bar(float x, float y, float width, float height) const {
        Add([&](Point p) { return DistanceToBox(p, {x, y, width, height}, 0.5F); });
    }
    void Stroke(Point from, Point to) const {
        Add([&](Point p) { return DistanceToStroke(p, from, to, kStroke); });
    }
    void Polygon(std::span<const Point> corners) const {
        Add([&](Point p) { return DistanceToPolygon(p, corners) - 0.35F; });
    }
    void Arc(Point center, float radius, float from, float to) const {
        Add([&](Point p) { return DistanceToArc(p, center, radius, from, to, kStroke); });
    }

private:
    static constexpr float kStroke = 1.5F;
    static constexpr float kReach = 8.0F;

    template <class Distance>
    void Add(Distance distance) const {
        const Box within{center_.x - kReach, center_.y - kReach, 2.0F * kReach, 2.0F * kReach};
        coverage_.Add(scale_, within, [&](Point p) { return distance(Point{p.x - center_.x, p.y - center_.y}); });
    }

    Coverage& coverage_;
    float scale_;
    Point center_;
};

void DrawStar(const IconPen& pen, Point center, float radius) {
    constexpr float kInner = 0.45F;
    std::array<Point, 10> corners;
    for (size_t i = 0; i < corners.size(); ++i) {
        const float reach = i % 2 == 0 ? radius : radius * kInner;
        corners[i] = OnCircle(center, reach, kPi * static_cast<float>(i) / 5.0F);
    }
    pen.Polygon(corners);
}

// To the right for a side of 1, to the left for -1.
void DrawSkip(const IconPen& pen, float side) {
    pen.Triangle({-4.6F * side, -4.3F}, {2.2F * side, 0.0F}, {-4.6F * side, 4.3F});
    pen.Bar(side > 0.0F ? 3.4F : -5.2F, -4.8F, 1.8F, 9.6F);
}

void DrawDouble(const IconPen& pen, float side) {
    pen.Triangle({-5.6F * side, -3.9F}, {-0.4F * side, 0.0F}, {-5.6F * side, 3.9F});
    pen.Triangle({0.4F * side, -3.9F}, {5.6F * side, 0.0F}, {0.4F * side, 3.9F});
}

void DrawShuffle(const IconPen& pen) {
    for (const float side : {-1.0F, 1.0F}) {
        pen.Stroke({-6.0F, 3.2F * side}, {-3.0F, 3.2F * side});
        pen.Stroke({-3.0F, 3.2F * side}, {1.4F, -3.2F * side});
        pen.Stroke({1.4F, -3.2F * side}, {3.6F, -3.2F * side});
        pen.Triangle({3.9F, -5.0F * side}, {6.4F, -3.2F * side}, {3.9F, -1.4F * side});
    }
}

void DrawFilter(const IconPen& pen) {
    constexpr std::array<Point, 6> kFunnel{
        {{-5.6F, -5.0F}, {5.6F, -5.0F}, {1.4F, 0.4F}, {1.4F, 5.2F}, {-1.4F, 3.8F}, {-1.4F, 0.4F}}};
    pen.Polygon(kFunnel);
}

// A star and a sign beside it.
void DrawFavorite(const IconPen& pen, bool more) {
    DrawStar(pen, {-2.4F, 0.3F}, 5.2F);
    pen.Stroke({4.0F, 0.0F}, {7.2F, 0.0F});
    if (more) pen.Stroke({5.6F, -1.6F}, {5.6F, 1.6F});
}

}  // namespace

void AddIcon(Coverage& coverage, float scale, Icon icon, Point center) {
    const IconPen pen(coverage, scale, center);
    switch (icon) {
        case Icon::kPrevious:
        case Icon::kNext:
            DrawSkip(pen, icon == Icon::kNext ? 1.0F : -1.0F);
            break;
        case Icon::kPlay:
            pen.Triangle({-3.8F, -5.6F}, {5.6F, 0.0F}, {-3.8F, 5.6F});
            break;
        case Icon::kPause:
            pen.Bar(-4.6F, -5.6F, 3.2F, 11.2F);
            pen.Bar(1.4F, -5.6F, 3.2F, 11.2F);
            break;
        case Icon::kBack:
        case Icon::kForward:
            DrawDouble(pen, icon == Icon::kForward ? 1.0F : -1.0F);
            break;
        case Icon::kShuffle:
            DrawShuffle(pen);
            break;
        case Icon::kFilter:
            DrawFilter(pen);
            break;
        case Icon::kFewer:
        case Icon::kMore:
            DrawFavorite(pen, icon == Icon::kMore);
            break;
        case Icon::kStar:
            DrawStar(pen, {0.0F, 0.3F}, 5.0F);
            break;
        case Icon::kPower:
            pen.Arc({0.0F, 0.6F}, 4.8F, 0.65F, 2.0F * kPi - 0.65F);
            pen.Stroke({0.0F, -5.6F}, {0.0F, -0.6F});
            break;
    }
}

}  // namespace hullrider
