"""--image-quality and --downsample: what they make smaller, and what they leave alone."""

import math
import os

import support

HEAD = "%!PS-Adobe-3.0\n<< /PageSize [200 200] >> setpagedevice\n"


def image(samples, width, height, space="/DeviceGray", bits=8, points=72, filters="/ASCIIHexDecode filter", entries=""):
    """A page with an image of so many points along each side."""
    operator = "imagemask" if space is None else "image"
    colour = "" if space is None else f"{space} setcolorspace\n"
    return (f"gsave 20 30 translate {points} dup scale\n{colour}"
            f"<< /ImageType 1 /Width {width} /Height {height} /BitsPerComponent {bits} {entries}\n"
            f"/ImageMatrix [{width} 0 0 -{height} 0 {height}] /DataSource currentfile {filters} >> {operator}\n"
            f"{bytes(samples).hex()}>\ngrestore showpage\n")


def photo(width, height, components):
    """Samples that change smoothly, and not in a way that compression without loss knows."""
    samples = bytearray()
    state = 1
    for y in range(height):
        for x in range(width):
            for component in range(components):
                state = state * 1103515245 + 12345 & 0x7FFFFFFF
                wave = math.sin((x + 20 * component) / 17) + math.cos(y / 23)
                samples.append(int(128 + 50 * wave) + state // 65536 % 5)
    return samples


GRADIENT = photo(96, 96, 3)
GRAY = photo(96, 96, 1)
RGB = {"samples": GRADIENT, "width": 96, "height": 96, "space": "/DeviceRGB"}
DECODE_NOTHING = "/Decode [0 1 0 1 0 1]"


class ImageOptionTest(support.CommandLineTest):
    dialect = ()

    def image(self, job, *options):
        """The dictionary and the data of the image on the only page."""
        pdf = self.convert(HEAD + job, *options)
        number, = pdf.resources(0, "/XObject").values()
        return pdf.value(number), pdf.data(number)

    def rgb(self, *options, **more):
        return self.image(image(**RGB, entries=DECODE_NOTHING, **more), *options)

    def jpeg(self, *options, quality="95", points=72):
        """An image that comes as JPEG data, and the data."""
        _, data = self.rgb("--image-quality", quality)
        job = image(data, 96, 96, "/DeviceRGB", points=points, entries=DECODE_NOTHING,
                    filters="/ASCIIHexDecode filter /DCTDecode filter")
        return self.image(job, *options), data

    def assert_stays(self, job, *options):
        self.assertEqual(self.image(job, *options), self.image(job))


class QualityTest(ImageOptionTest):
    def test_images_keep_every_sample_unless_asked_otherwise(self):
        entries, data = self.rgb()
        self.assertNotIn("/Filter", entries)
        self.assertEqual(data, GRADIENT)

    def test_images_of_many_colours_become_jpeg(self):
        entries, data = self.rgb("--image-quality", "60")
        self.assertEqual((entries["/Filter"], entries["/Width"], entries["/Height"]), ("/DCTDecode", 96, 96))
        self.assertTrue(data.startswith(b"\xff\xd8"))

    def test_lower_quality_is_shorter(self):
        lengths = [len(self.rgb("--image-quality", quality)[1]) for quality in ("1", "40", "85", "100")]
        self.assertEqual(lengths, sorted(lengths))
        self.assertLess(lengths[0], lengths[3] / 4)

    def test_gray_and_cmyk_become_jpeg_too(self):
        for space, components, decode in (("/DeviceGray", 1, "[0 1]"), ("/DeviceCMYK", 4, "[0 1 0 1 0 1 0 1]")):
            job = image(photo(96, 96, components), 96, 96, space, entries=f"/Decode {decode}")
            entries, _ = self.image(job, "--image-quality", "50")
            self.assertEqual((entries["/Filter"], entries["/ColorSpace"]), ("/DCTDecode", space))

    def test_images_of_few_colours_stay_exact(self):
        samples = bytes([0, 0, 255] * 48 + [255, 255, 255] * 48) * 96
        self.assert_stays(image(samples, 96, 96, "/DeviceRGB", entries=DECODE_NOTHING), "--image-quality", "90")

    def test_jpeg_data_is_passed_on_unless_asked_otherwise(self):
        (entries, passed), data = self.jpeg()
        self.assertEqual(entries["/Filter"], "/DCTDecode")
        self.assertEqual(passed, data)

    def test_jpeg_data_becomes_shorter_with_a_lower_quality(self):
        (entries, made), data = self.jpeg("--image-quality", "30")
        self.assertEqual(entries["/Filter"], "/DCTDecode")
        self.assertLess(len(made), len(data) / 2)

    def test_jpeg_data_that_would_become_longer_stays_byte_for_byte(self):
        (_, passed), data = self.jpeg("--image-quality", "100", quality="50")
        self.assertEqual(passed, data)

    def test_the_picture_stays_the_same_to_the_eye(self):
        self.rgb("--image-quality", "90")
        before, after = self.rendered("job.pdf"), None
        self.rgb()
        after = self.rendered("job.pdf")
        self.assertEqual(len(before), len(after))
        self.assertLess(sum(abs(one - other) for one, other in zip(before, after)) / len(after), 3)

    def rendered(self, name):
        command = ["pdftoppm", "-r", "72", "-singlefile", name, "page"]
        support.subprocess.run(command, cwd=self.folder, check=True, timeout=support.SECONDS)
        return self.read("page.ppm")


class DownsamplingTest(ImageOptionTest):
    def test_images_are_averaged_down(self):
        # 4 x 2 pixels on an inch, at 2 to the inch: columns in pairs.
        job = image([0, 255, 100, 200, 10, 20, 30, 40], 4, 2, entries="/Decode [0 1]")
        entries, data = self.image(job, "--downsample", "2")
        self.assertEqual((entries["/Width"], entries["/Height"]), (2, 2))
        self.assertEqual(list(data), [128, 150, 15, 35])

    def test_pixels_are_shared_out_where_they_lie(self):
        # 3 pixels become 2: the middle one belongs to both.
        entries, data = self.image(image([0, 90, 240], 3, 1, entries="/Decode [0 1]"), "--downsample", "2")
        self.assertEqual((entries["/Width"], list(data)), (2, [30, 190]))

    def test_rows_are_averaged_too(self):
        entries, data = self.image(image([0, 90, 240], 1, 3, entries="/Decode [0 1]"), "--downsample", "2")
        self.assertEqual((entries["/Height"], list(data)), (2, [30, 190]))

    def test_fewer_bits_are_spread_over_eight(self):
        entries, data = self.image(image([0x0F, 0x3C], 4, 1, bits=4, entries="/Decode [0 1]"), "--downsample", "2")
        self.assertEqual(entries["/BitsPerComponent"], 8)
        self.assertEqual(list(data), [128, 128])

    def test_the_size_on_the_page_counts(self):
        entries, _ = self.rgb("--downsample", "96", points=36)
        self.assertEqual((entries["/Width"], entries["/Height"]), (48, 48))

    def test_images_below_the_resolution_stay(self):
        job = image(**RGB, entries=DECODE_NOTHING)
        self.assert_stays(job, "--downsample", "96")
        self.assert_stays(job, "--downsample", "300")

    def test_masks_and_tables_and_bits_stay_exact(self):
        table = "[ /Indexed /DeviceRGB 3 <000000 ff0000 00ff00 0000ff> ]"
        jobs = [image(range(64), 16, 32, space, bits=1, entries=f"/Decode [{decode}]")
                for space, decode in (("/DeviceGray", "0 1"), (None, "0 1"))]
        jobs.append(image([3, 1, 0, 2] * 64, 16, 16, table, entries="/Decode [0 255]"))
        for job in jobs:
            self.assert_stays(job, "--downsample", "4", "--image-quality", "10")

    def test_images_with_a_colour_that_is_not_painted_stay_exact(self):
        job = image(GRAY, 96, 96, entries="/Decode [0 1] /MaskColor [100]").replace("/ImageType 1", "/ImageType 4")
        self.assert_stays(job, "--downsample", "4", "--image-quality", "10")

    def test_jpeg_data_above_the_resolution_becomes_smaller_jpeg_data(self):
        (entries, made), data = self.jpeg("--downsample", "96", points=36)
        self.assertEqual((entries["/Filter"], entries["/Width"], entries["/Height"]), ("/DCTDecode", 48, 48))
        self.assertLess(len(made), len(data))

    def test_jpeg_data_below_the_resolution_is_passed_on(self):
        (_, passed), data = self.jpeg("--downsample", "96")
        self.assertEqual(passed, data)

    def test_data_that_ends_early_keeps_its_place(self):
        job = image([0, 255, 100, 200], 2, 4, entries="/Decode [0 1]")
        entries, data = self.image(job, "--downsample", "2")
        self.assertEqual((entries["/Height"], list(data)), (1, [50, 228]))
        made = support.Pdf(self.path("job.pdf")).words(0)
        self.image(job)
        self.assertEqual(made, support.Pdf(self.path("job.pdf")).words(0))

    def test_both_options_go_together(self):
        entries, _ = self.rgb("--downsample", "96", "--image-quality", "50", points=36)
        self.assertEqual((entries["/Filter"], entries["/Width"]), ("/DCTDecode", 48))


class UsageTest(ImageOptionTest):
    def test_numbers_out_of_range_are_refused(self):
        for option, numbers in (("--image-quality", ("0", "101", "x", "50.5")), ("--downsample", ("0", "-1", "nan", "dpi"))):
            for number in numbers:
                self.write("job.ps", HEAD + "showpage\n")
                result = self.run_program("job.ps", f"{option}={number}")
                self.assertEqual(result.code, 2, (option, number))
                self.assertIn(f'"{number}"', result.err)
                self.assertFalse(os.path.exists(self.path("job.pdf")))

    def test_the_drivers_dialect_has_neither(self):
        self.write("job.ps", HEAD + "showpage\n")
        for option in ("--image-quality=50", "--downsample=100"):
            result = self.run_program("job.ps", "--dialect", "driver", option)
            self.assertEqual(result.code, 2)
            self.assertIn("want --dialect full", result.err)


if __name__ == "__main__":
    support.main()
