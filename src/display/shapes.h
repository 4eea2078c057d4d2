// Plane shapes as signed distances: negative inside, positive outside, 0 on the edge, in the units of the arguments.
// After Inigo Quilez, "2D distance functions". Pure.
#pragma once

#include <span>

#include "display/panel_layout.h"

namespace hullrider {

using Point = DesignPoint;

float DistanceToBox(Point p, const Box& box, float cornerRadius);
float DistanceToCircle(Point p, Point center, float radius);
float DistanceToStroke(Point p, Point from, Point to, float width);  // with round ends
float DistanceToPolygon(Point p, std::span<const Point> corners);

// An arc with round ends. Angles in radians, clockwise from above.
float DistanceToArc(Point p, Point center, float radius, float fromAngle, float toAngle, float width);

// The point on a circle at that angle, clockwise from above.
Point OnCircle(Point center, float radius, float angle);

}  // namespace hullrider
