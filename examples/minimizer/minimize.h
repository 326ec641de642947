/* Functions with their gradients, and methods that find their minima. */
#ifndef MINIMIZER_MINIMIZE_H
#define MINIMIZER_MINIMIZE_H

enum { MAX_DIMENSION = 100 };

/* In the order of the values in the definition file. */
enum function { ROSENBROCK, HIMMELBLAU, BEALE, BOWL };
enum method { BFGS, CONJUGATE, DESCENT };

struct problem {
  int function;     /* one of enum function */
  int dimension;    /* 2 to MAX_DIMENSION; HIMMELBLAU and BEALE use the first two variables */
  double condition; /* of BOWL, at least 1 */
};

struct algorithm {
  int method; /* one of enum method */
  double gradient_tol;
  int iteration_limit;
  double decrease;  /* of the sufficient decrease condition */
  double curvature; /* of the curvature condition, more than decrease */
};

struct result {
  int converged;
  int iterations;
  int evaluations;
  double value;
  double gradient; /* the largest component, as an absolute value */
};

/* The point from which the function is usually started. */
void usual_start(const struct problem* problem, double* x);

/* The value at x; fills the gradient. */
double evaluate(const struct problem* problem, const double* x, double* gradient);

/* Moves x to a minimum near it. Calls log, unless it is nil, after each iteration. */
struct result minimize(const struct problem* problem, const struct algorithm* algorithm, double* x,
                       void (*log)(const struct result* now, void* context), void* context);

#endif
