"""What the command line understands, and what it says when it does not."""

import support


class UsageTest(support.CommandLineTest):
    def assert_usage_error(self, *arguments, says):
        self.write("job.ps", support.HEADER)
        result = self.run_program(*arguments)
        self.assertEqual((result.code, result.out), (2, b""))
        self.assertIn(says, result.err)
        self.assertEqual(self.files(), ["job.ps"])

    def test_help_goes_to_standard_output_and_names_every_option(self):
        result = self.run_program("--help")
        self.assertEqual((result.code, result.err), (0, ""))
        options = ["--output", "--media", "--chunk", "--keep-going", "--content", "--objects", "--messages"]
        for option in [*options, "--help", "--version", "JOB"]:
            self.assertIn(option, result.out.decode())

    def test_help_explains_the_exit_codes(self):
        self.assertIn(b"1 error in the job", self.run_program("--help").out)

    def test_version_is_a_name_and_a_number(self):
        result = self.run_program("--version")
        self.assertEqual((result.code, result.err), (0, ""))
        self.assertRegex(result.out.decode(), r"^quillpress \d+\.\d+\.\d+\n$")

    def test_no_job_is_a_usage_error(self):
        self.assert_usage_error(says="JOB is required")

    def test_a_job_given_twice_is_a_usage_error(self):
        self.assert_usage_error("job.ps", "./job.ps", says="would be written by job.ps and by ./job.ps")

    def test_output_without_a_character_is_a_usage_error(self):
        self.assert_usage_error("job.ps", "-o", "", says="empty name")

    def test_unknown_option_is_a_usage_error(self):
        self.assert_usage_error("job.ps", "--colour", says="--colour")

    def test_output_without_a_name_is_a_usage_error(self):
        self.assert_usage_error("job.ps", "-o", says="--output")

    def test_unknown_media_is_a_usage_error(self):
        for media in ["A44", "210x", "x297", "210x297miles", "-5x10", "0x100", "1x99999", "10x10x10"]:
            self.assert_usage_error("job.ps", f"--media={media}", says=media)

    def test_chunk_that_is_no_size_is_a_usage_error(self):
        for size in ["0", "-1", "ten", "1.5", "4G", "2000M", "K", "99999999999999999999", "1 K"]:
            self.assert_usage_error("job.ps", f"--chunk={size}", says=size)

    def test_usage_errors_point_to_help(self):
        self.assert_usage_error("job.ps", "--colour", says="--help")

    def test_job_is_not_replaced_by_its_own_output(self):
        self.write("job.ps", support.pages(""))
        result = self.run_program("job.ps", "-o", "./job.ps")
        self.assertEqual(result.code, 2)
        self.assertIn("job itself", result.err)
        self.assertTrue(self.read("job.ps").startswith(b"%!PS"))


if __name__ == "__main__":
    support.main()
