// A solver whose options have moved in: it takes them from a definition, the environment, files and
// the command line.
#include <iostream>
#include <optxv/optxv.hpp>

namespace solver {

struct options {
  double time_limit;
  std::int32_t threads;
  std::string method;
  bool presolve;
  std::string log_file;
};

void fill(options& values, const optxv::options& from) {
  values.time_limit = from.get<double>("time_limit");
  values.threads = from.get<std::int32_t>("threads");
  values.method = from.get<std::string>("method");
  values.presolve = from.get<bool>("presolve");
  values.log_file = from.get<std::string>("log_file");
}

int solve(const std::string& model, const options& values) {
  std::cout << model << ": " << values.method << " on " << values.threads << " threads for "
            << values.time_limit << " s" << (values.presolve ? ", presolved\n" : "\n");
  if (!values.log_file.empty()) std::cout << "log in " << values.log_file << '\n';
  return 0;
}

}  // namespace solver

int main(int argc, char** argv) try {
  optxv::options options = optxv::options::from_file("examples/embedding/solver.def");
  options.read_environment("SOLVER_");
  options.read_arguments(argc, argv);
  for (const optxv::message& each : options.messages()) std::cerr << each.shown << '\n';
  if (options.faults().errors > 0 || argc != 2) {
    std::cerr << "usage: solver [--option=value]... MODEL\n";
    return 2;
  }
  solver::options values;
  solver::fill(values, options);
  return solver::solve(argv[1], values);
} catch (const optxv::error& failure) {  // the program and its definition do not fit
  std::cerr << "solver: " << failure.what() << '\n';
  return 3;
}
