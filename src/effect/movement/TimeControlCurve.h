// The time-control curve of the movements that run at even speed: it bends the fraction
// of the object that has passed before the movement uses it. The curve is a list of
// records of four doubles kept by the item.
#pragma once

#include <vector>

namespace Effect::TimeControlCurve {

// curve(x) for x in 0 to 1. A list that is not a whole number (one or more) of records
// gives x itself.
double evaluate(const std::vector<double>& curve, double x);

// The parameter of a cubic Bezier with abscissae x0..x3 at abscissa `x`, by Newton
// iteration; 0.5 for a curve without width.
double solve(double x0, double x1, double x2, double x3, double x);

}  // namespace Effect::TimeControlCurve
