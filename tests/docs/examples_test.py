#!/usr/bin/env python3
"""The examples do what their comments promise. OPTXV_LIBRARY, OPTXV_SOURCE and OPTXV_MINIMIZER say where they are."""
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
import listing  # noqa: E402  (found beside this file)
import optxv  # noqa: E402

EXAMPLES = Path(os.environ['OPTXV_SOURCE']) / 'examples'


class ParameterFiles(unittest.TestCase):
    def setUp(self):
        os.chdir(EXAMPLES.parent)  # a nested file is named from where the program runs
        self.options = self.enterContext(optxv.Options('examples/solver.def'))

    def read(self, name):
        return [message.shown for message in self.options.read(f'examples/{name}.opt')]

    def test_the_definition_has_no_fault(self):
        self.assertEqual(self.options.messages, [])
        self.assertEqual(self.options.lookup('explain'), 'explain')  # the last record but the names: it read to its end
        self.assertEqual(self.options.lookup('reslim'), 'time_limit')

    def test_the_clean_file_is_clean(self):
        self.assertEqual(self.read('solver'), [])
        values = listing.values(self.options)
        for line in ('time_limit = 900', 'iteration_limit = 200000', 'threads = 1', 'scale_range = 0.001 10000',
                     'feasibility_tol = 1E-8', 'log_file = night run 8.log', 'method = primal', 'dive_first = 1',
                     'read_path[3] = /models/tight', '--note[1] = checked by the day shift',
                     'y.priority(feb,*) = 7', "balance(i,'oslo')$open(i) = 1", 'meet$close = 0'):
            self.assertIn(line, values)

    def test_the_notices_are_no_errors_except_the_one_that_is_asked_for(self):
        self.options.read('examples/notices.opt')
        self.assertEqual((self.options.errors, self.options.warnings), (1, 4))

    def test_every_faulty_line_is_reported_and_the_last_one_still_counts(self):
        told = {int(number) for message in self.read('faulty') for number in re.findall(r'line (\d+):', message)}
        lines = (EXAMPLES / 'faulty.opt').read_text().splitlines()
        unopened = 1 + next(i for i, line in enumerate(lines) if line.startswith('read '))  # reported without a line
        self.assertEqual(told | {unopened}, set(range(2, len(lines))))
        self.assertIn('iteration_limit = 5000', listing.values(self.options))


@unittest.skipUnless(os.environ.get('OPTXV_MINIMIZER'), 'the examples were not built')
class Minimizer(unittest.TestCase):
    def run_with(self, *words):
        done = subprocess.run([os.environ['OPTXV_MINIMIZER'], 'examples/minimizer/minimizer.def', *words],
                              cwd=EXAMPLES.parent, stdout=subprocess.PIPE, text=True, timeout=60)
        return done.returncode, done.stdout

    def test_options_change_the_run(self):
        plain = self.run_with()
        runs = [plain] + [self.run_with(*words) for words in (
            ['--method=conjugate'], ['--start-point', '3', '3'], ["x.start('2') = 2"], ['log_freq=10'], ['gra_tol=1e-2'],
            ['ite_lim=5'], ['summary=no'], ['echo_options', 'dim=3'], ['@examples/minimizer/valley.opt'])]
        self.assertEqual(len({output for _, output in runs}), len(runs))
        self.assertEqual([status for status, _ in runs], [0, 0, 0, 0, 0, 0, 1, 0, 0, 0])

    def test_every_method_finds_the_known_minima(self):
        for function, minimum in (('rosenbrock', [1, 1]), ('himmelblau', [3, 2]), ('beale', [3, 0.5]), ('bowl', [0, 0])):
            for method in ('bfgs', 'conjugate', 'descent'):
                status, output = self.run_with(f'function={function}', f'method={method}', 'iteration_limit=1e6')
                found = [round(float(x), 5) for x in re.findall(r'  x\d+ = (\S+)', output)]
                self.assertEqual((status, found), (0, minimum), output)

    def test_wrong_options_are_reported_and_stop_it(self):
        for word, message in (('dimension=1', 'Valid range is 2 to 100'), ('tolerance=1', 'Unknown option "tolerance"'),
                              ('method=newton', 'Possible values are  bfgs conjugate descent'),
                              ('@no_such_file', 'Cannot open parameter file "no_such_file"'),
                              ("x.start('3') = 1", 'one number of a variable')):
            status, output = self.run_with(word)
            self.assertEqual((status, message in output), (2, True), output)
            self.assertNotIn('minimum', output)


if __name__ == '__main__':
    unittest.main()
