"""The examples for many jobs and many machines, with a job that fails and a run that does the rest."""

import json
import shutil

import scale_support
import support
from scale_support import EXAMPLES, PAGE


class ScaleTest(scale_support.ListOfJobsTest):
    def test_make(self):
        self.assert_fails_then_finishes("make", "-k", "-j2", "-f", str(EXAMPLES / "Makefile"))

    def test_gnu_parallel(self):
        self.assertIsNotNone(shutil.which("parallel"), "scripts/setup installs it")
        self.assert_fails_then_finishes(str(EXAMPLES / "parallel.sh"), "list", "2/:")

    def test_tasks_of_an_array(self):
        array = str(EXAMPLES / "array.sh")
        codes = [self.run_example(array, "list", TASK=str(task), TASKS="2") for task in (1, 2)]
        # The fourth job is in the second half.
        self.assertEqual(codes, [0, 1])
        self.assertEqual(self.pdfs(), [name for name in self.names if name != "job3"])
        self.write("job3.ps", PAGE)
        self.assertEqual(self.run_example(array, "list", SLURM_ARRAY_TASK_ID="2", SLURM_ARRAY_TASK_COUNT="2"), 0)
        self.assertEqual(self.pdfs(), self.names)
        records = [json.loads(line) for line in self.read("list.report.2").splitlines()]
        self.assertEqual([(record["job"], record["code"]) for record in records],
                         [("job1.ps", 0), ("job3.ps", 1), ("job5.ps", 0), ("job3.ps", 0)])


if __name__ == "__main__":
    support.main()
