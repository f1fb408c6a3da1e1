#!/usr/bin/env python3
"""Runs the example on recordings of many shapes, whole and broken: equalizer_test.py [-v] PROGRAM

SPDX-License-Identifier: MIT
"""
import math
import pathlib
import random
import re
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "support"))
from example_test import ExampleTest, curves_of, level, read_wav, write_wav  # noqa: E402


def tone(rate, frequency, amplitude=0.1, seconds=1.0):
    return [amplitude * math.sin(2 * math.pi * frequency * i / rate) for i in range(round(rate * seconds))]


def settled_level(samples, rate, frequency):
    return level(samples[len(samples) // 2:], rate, frequency)


class Equalizer(ExampleTest):
    def assert_works(self, *arguments):
        return super().assert_works(*arguments, self.recording)

    def check_gain(self, rate, frequency, wanted, *bands):
        write_wav(self.recording, rate, [tone(rate, frequency)])
        self.assert_works(*bands)
        got = settled_level(read_wav(self.out / "equalized.wav")[1][0], rate, frequency)
        self.assertAlmostEqual(got, -20 + wanted, delta=0.05)

    def test_peak_at_its_frequency(self):
        self.check_gain(44100, 1000, 6, "--peak", "1000:6:2")
        self.check_gain(8000, 1000, -9.5, "--peak", "1000:-9.5:0.7")

    def test_far_from_the_peak(self):
        self.check_gain(48000, 100, 0, "--peak", "6000:12:8")

    def test_cut_offs_lose_3_db(self):
        self.check_gain(48000, 200, 10 * math.log10(0.5), "--high-pass", 200)
        self.check_gain(16000, 3000, 10 * math.log10(0.5), "--low-pass", 3000)

    def test_bands_add_up(self):
        self.check_gain(48000, 2000, 4 - 2 + 10 * math.log10(0.5), "--peak", "2000:4:1", "--peak", "2000:-2:3",
                        "--high-pass", 2000)

    def test_channels_do_not_mix(self):
        write_wav(self.recording, 48000, [tone(48000, 500), tone(48000, 5000), [0.0] * 48000])
        self.assert_works("--peak", "500:6:4", "--peak", "5000:-6:4")
        rate, channels = read_wav(self.out / "equalized.wav")
        self.assertEqual((rate, len(channels)), (48000, 3))
        self.assertAlmostEqual(settled_level(channels[0], rate, 500), -14, delta=0.1)
        self.assertAlmostEqual(settled_level(channels[1], rate, 5000), -26, delta=0.1)
        self.assertEqual(set(channels[2]), {0.0})

    def test_block_length_changes_nothing(self):
        source = random.Random(1)
        write_wav(self.recording, 8000, [[source.uniform(-0.3, 0.3) for _ in range(5000)] for _ in range(2)])
        results = []
        for block in (1, 2, 17, 333, 100000):
            self.assert_works("--block", block)
            results.append(read_wav(self.out / "equalized.wav")[1])
        for other in results[1:]:
            for a, b in zip(results[0], other):
                self.assertLessEqual(max(abs(x - y) for x, y in zip(a, b)), 1.01 / 32768)

    def test_measured_is_wanted(self):
        write_wav(self.recording, 48000, [tone(48000, 440)])
        report = self.assert_works()
        self.assertEqual(report.count("Hz, quality"), 2)
        self.assertLess(float(re.search(r"deviation +(\S+) dB", report).group(1)), 0.3)

    def test_picture(self):
        write_wav(self.recording, 48000, [tone(48000, 440)])
        self.assert_works("--peak", "1000:6:1")
        wanted, measured = curves_of(self.out / "picture.svg")
        self.assertEqual(len(wanted), len(measured))
        self.assertGreater(len(wanted), 200)
        for (x, y), (x2, y2) in zip(wanted, measured):
            self.assertEqual(x, x2)
            self.assertAlmostEqual(y, y2, delta=0.5)
        self.assertLess(min(y for _, y in wanted), wanted[0][1] - 30)  # the peak stands out

    def test_clipping_is_told(self):
        write_wav(self.recording, 48000, [tone(48000, 1000, 0.9)])
        self.assertIn("clipped", self.assert_works("--peak", "1000:12:1"))

    def test_low_sample_rates_have_fewer_bands(self):
        write_wav(self.recording, 4000, [tone(4000, 440)])
        self.assertIn("2 sections", self.assert_works())

    def test_bad_arguments(self):
        write_wav(self.recording, 8000, [tone(8000, 440)])
        for arguments, words in (
                ((), ["no recording"]),
                (("a.wav", "b.wav"), ["a.wav", "b.wav"]),
                (("--loud", self.recording), ["--loud"]),
                ((self.recording, "--peak"), ["--peak"]),
                (("--peak", "1000:6", self.recording), ["1000:6"]),
                (("--peak", "1000:6:1:2", self.recording), ["1000:6:1:2"]),
                (("--peak", "1000:x:1", self.recording), ["1000:x:1"]),
                (("--peak", "1000:nan:1", self.recording), ["nan"]),
                (("--peak", "1000:80:1", self.recording), ["40"]),
                (("--high-pass", "0", self.recording), ["--high-pass"]),
                (("--high-pass", "4000", self.recording), ["4000 Hz"]),
                (("--block", "0", self.recording), ["--block"]),
                (("--block", "1.5", self.recording), ["whole"]),
                ((self.dir / "missing.wav",), ["missing.wav"])):
            with self.subTest(arguments=arguments):
                self.assert_fails(*arguments, words=words)
                self.assertFalse(self.out.exists())

    def test_broken_recordings(self):
        self.recording.write_bytes(b"RIFF no sound")
        self.assert_fails(self.recording, words=["recording.wav"])

    def test_place_that_cannot_be_written(self):
        write_wav(self.recording, 8000, [tone(8000, 440)])
        self.out.write_text("a file")
        self.assert_fails(self.recording, words=["out"])

    def test_help(self):
        run = self.run_program("--help")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        for option in ("--high-pass", "--low-pass", "--peak", "--block", "--out"):
            self.assertIn(option, run.stdout)


if __name__ == "__main__":
    unittest.main()
