/* Classic functions for the test of minimization methods, with their gradients. */
#include <math.h>

#include "minimize.h"

/* H. H. Rosenbrock, 1960, chained to any dimension: 0 at (1, ..., 1). */
static double rosenbrock(int n, const double* x, double* g) {
  double f = 0;
  for (int i = 0; i < n; i++) g[i] = 0;
  for (int i = 0; i + 1 < n; i++) {
    const double valley = x[i + 1] - x[i] * x[i], along = 1 - x[i];
    f += 100 * valley * valley + along * along;
    g[i] += -400 * x[i] * valley - 2 * along;
    g[i + 1] += 200 * valley;
  }
  return f;
}

/* D. M. Himmelblau, 1972: 0 at four points, one of them (3, 2). */
static double himmelblau(const double* x, double* g) {
  const double a = x[0] * x[0] + x[1] - 11, b = x[0] + x[1] * x[1] - 7;
  g[0] = 4 * x[0] * a + 2 * b;
  g[1] = 2 * a + 4 * x[1] * b;
  return a * a + b * b;
}

/* E. M. L. Beale, 1958: 0 at (3, 0.5). */
static double beale(const double* x, double* g) {
  static const double c[] = {1.5, 2.25, 2.625};
  double f = 0, power = 1;
  g[0] = g[1] = 0;
  for (int i = 0; i < 3; i++) {
    const double lower = power;
    power *= x[1];
    const double r = c[i] - x[0] * (1 - power);
    f += r * r;
    g[0] -= 2 * r * (1 - power);
    g[1] += 2 * r * x[0] * (i + 1) * lower;
  }
  return f;
}

/* Half the sum of w x^2, with weights w from 1 to the condition number. */
static double bowl(int n, double condition, const double* x, double* g) {
  double f = 0;
  for (int i = 0; i < n; i++) {
    const double weight = pow(condition, (double)i / (n - 1));
    g[i] = weight * x[i];
    f += 0.5 * g[i] * x[i];
  }
  return f;
}

void usual_start(const struct problem* problem, double* x) {
  static const double starts[][2] = {{-1.2, 1}, {0, 0}, {1, 1}, {1, 1}};
  for (int i = 0; i < problem->dimension; i++) x[i] = starts[problem->function][i % 2];
}

double evaluate(const struct problem* problem, const double* x, double* gradient) {
  for (int i = 2; i < problem->dimension; i++) gradient[i] = 0;
  switch (problem->function) {
    case HIMMELBLAU:
      return himmelblau(x, gradient);
    case BEALE:
      return beale(x, gradient);
    case BOWL:
      return bowl(problem->dimension, problem->condition, x, gradient);
    default:
      return rosenbrock(problem->dimension, x, gradient);
  }
}
