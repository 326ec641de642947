/* Line search methods; see J. Nocedal and S. J. Wright, Numerical Optimization, chapters 3, 5, 6.
 */
#include "minimize.h"

#include <math.h>
#include <string.h>

/* Where a run stands: a point, its gradient, the direction, and for BFGS the inverse Hessian. */
struct state {
  const struct problem* problem;
  double* x;
  double gradient[MAX_DIMENSION];
  double direction[MAX_DIMENSION];
  double inverse[MAX_DIMENSION][MAX_DIMENSION];
  struct result result;
};

static double dot(int n, const double* a, const double* b) {
  double sum = 0;
  for (int i = 0; i < n; i++) sum += a[i] * b[i];
  return sum;
}

static double largest(int n, const double* a) {
  double most = 0;
  for (int i = 0; i < n; i++) most = fmax(most, fabs(a[i]));
  return most;
}

static void reset_inverse(struct state* state) {
  const int n = state->problem->dimension;
  for (int i = 0; i < n; i++)
    for (int j = 0; j < n; j++) state->inverse[i][j] = i == j;
}

static void downhill(struct state* state) {
  for (int i = 0; i < state->problem->dimension; i++) state->direction[i] = -state->gradient[i];
}

/*
 * A step that meets the weak Wolfe conditions, found by doubling and bisection. Fills the point and
 * the gradient there and gives its value; gives a value that is not below the old one if no step in
 * sixty does, as at the limit of the arithmetic.
 */
static double search(struct state* state, const struct algorithm* algorithm, double* x,
                     double* gradient) {
  const int n = state->problem->dimension;
  const double slope = dot(n, state->gradient, state->direction);
  double low = 0, high = INFINITY, step = 1, value = state->result.value;
  for (int trial = 0; trial < 60; trial++) {
    for (int i = 0; i < n; i++) x[i] = state->x[i] + step * state->direction[i];
    value = evaluate(state->problem, x, gradient);
    state->result.evaluations++;
    if (!(value <= state->result.value + algorithm->decrease * step * slope))
      high = step;
    else if (dot(n, gradient, state->direction) < algorithm->curvature * slope)
      low = step;
    else
      break;
    step = isinf(high) ? 2 * low : (low + high) / 2;
  }
  return value;
}

/* The BFGS update of the inverse Hessian, from the step s and the change y of the gradient. */
static void update_inverse(struct state* state, const double* s, const double* y) {
  const int n = state->problem->dimension;
  const double sy = dot(n, s, y);
  double hy[MAX_DIMENSION];
  if (!(sy > 0)) return;
  for (int i = 0; i < n; i++) hy[i] = dot(n, state->inverse[i], y);
  const double factor = (1 + dot(n, y, hy) / sy) / sy;
  for (int i = 0; i < n; i++)
    for (int j = 0; j < n; j++)
      state->inverse[i][j] += factor * s[i] * s[j] - (hy[i] * s[j] + s[i] * hy[j]) / sy;
}

/* The next direction, once the gradient is the new one; falls back on steepest descent. */
static void redirect(struct state* state, const struct algorithm* algorithm, const double* s,
                     const double* y, const double* old) {
  const int n = state->problem->dimension;
  double* direction = state->direction;
  if (algorithm->method == BFGS) {
    update_inverse(state, s, y);
    for (int i = 0; i < n; i++) direction[i] = -dot(n, state->inverse[i], state->gradient);
  } else if (algorithm->method == CONJUGATE) {
    const double beta = fmax(0, dot(n, state->gradient, y) / dot(n, old, old));
    for (int i = 0; i < n; i++) direction[i] = beta * direction[i] - state->gradient[i];
  } else {
    downhill(state);
  }
  if (!(dot(n, direction, state->gradient) < 0)) {
    reset_inverse(state);
    downhill(state);
  }
}

/* One iteration; gives 0 if no step makes progress. */
static int advance(struct state* state, const struct algorithm* algorithm) {
  const int n = state->problem->dimension;
  double x[MAX_DIMENSION], gradient[MAX_DIMENSION], s[MAX_DIMENSION], y[MAX_DIMENSION],
      old[MAX_DIMENSION];
  const double value = search(state, algorithm, x, gradient);
  if (!(value < state->result.value)) return 0;
  for (int i = 0; i < n; i++) {
    s[i] = x[i] - state->x[i];
    y[i] = gradient[i] - state->gradient[i];
  }
  const size_t size = (size_t)n * sizeof(double);
  memcpy(old, state->gradient, size);
  memcpy(state->gradient, gradient, size);
  memcpy(state->x, x, size);
  state->result.value = value;
  state->result.gradient = largest(n, gradient);
  state->result.iterations++;
  redirect(state, algorithm, s, y, old);
  return 1;
}

struct result minimize(const struct problem* problem, const struct algorithm* algorithm, double* x,
                       void (*log)(const struct result* now, void* context), void* context) {
  struct state state = {.problem = problem, .x = x, .result = {.evaluations = 1}};
  reset_inverse(&state);
  state.result.value = evaluate(problem, x, state.gradient);
  state.result.gradient = largest(problem->dimension, state.gradient);
  downhill(&state);
  for (;;) {
    state.result.converged = state.result.gradient <= algorithm->gradient_tol;
    if (state.result.converged || state.result.iterations >= algorithm->iteration_limit) break;
    if (!advance(&state, algorithm)) break;
    if (log) log(&state.result, context);
  }
  return state.result;
}
