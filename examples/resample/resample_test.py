#!/usr/bin/env python3
"""Runs the example on recordings of many rates, whole and broken: resample_test.py [-v] PROGRAM

SPDX-License-Identifier: MIT
"""
import math
import pathlib
import random
import re
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "support"))
from example_test import ExampleTest, amplitude, curves_of, read_wav, write_wav  # noqa: E402


def tone(rate, frequency, amplitude=0.5, seconds=0.5):
    return [amplitude * math.sin(2 * math.pi * frequency * i / rate) for i in range(round(rate * seconds))]


class Resample(ExampleTest):
    def assert_works(self, *arguments):
        return super().assert_works(*arguments, self.recording)

    def result(self):
        return read_wav(self.out / "resampled.wav")

    def check_tone(self, rate, new_rate, frequency):
        """A sine stays the same sine, at the same times."""
        write_wav(self.recording, rate, [tone(rate, frequency)])
        self.assert_works("--rate", new_rate)
        got_rate, (got,) = self.result()
        self.assertEqual(got_rate, new_rate)
        self.assertEqual(len(got), math.ceil(round(rate * 0.5) * new_rate / rate))
        want = tone(new_rate, frequency, 0.5 * 32767 / 32768)  # as the file has it
        inside = range(len(got) // 4, len(got) * 3 // 4)
        self.assertLess(max(abs(got[i] - want[i]) for i in inside), 2 / 32768)

    def test_up(self):
        self.check_tone(44100, 48000, 1234)
        self.check_tone(8000, 48000, 3000)

    def test_down(self):
        self.check_tone(48000, 44100, 18000)
        self.check_tone(44100, 8000, 500)
        self.check_tone(48000, 16000, 7000)

    def test_odd_ratios(self):
        self.check_tone(11025, 10007, 440)
        self.check_tone(8000, 8000, 440)

    def test_nothing_aliases(self):
        # 15 kHz would come out at 1 kHz.
        write_wav(self.recording, 48000, [tone(48000, 15000)])
        self.assert_works("--rate", 16000)
        rate, (got,) = self.result()
        self.assertLess(amplitude(got[2000:-2000], rate, 1000), 1e-5)
        self.assertLess(max(map(abs, got[2000:-2000])), 2 / 32768)

    def test_what_it_measures(self):
        write_wav(self.recording, 44100, [tone(44100, 440)])
        for arguments, most in ((("--rate", 48000), -119), (("--rate", 22050), -119),
                                (("--rate", 48000, "--attenuation", 60), -59),
                                (("--rate", 32000, "--attenuation", 80, "--pass", 80), -79)):
            report = self.assert_works(*arguments)
            aliases = float(re.search(r"aliases +(\S+) dB below", report).group(1))
            self.assertGreater(aliases, -most)
            self.assertLess(aliases, -most + 40)
            ripple = float(re.search(r"within (\S+) dB", report).group(1))
            self.assertLess(ripple, 0.02)

    def test_less_quality_is_a_shorter_filter(self):
        write_wav(self.recording, 44100, [tone(44100, 440)])
        taps = []
        for arguments in ((), ("--attenuation", 80), ("--attenuation", 80, "--pass", 50)):
            taps.append(int(re.search(r"filter +(\d+) taps", self.assert_works(*arguments)).group(1)))
        self.assertEqual(taps, sorted(taps, reverse=True))
        self.assertLess(taps[2], taps[0] / 4)

    def test_channels_do_not_mix(self):
        write_wav(self.recording, 44100, [tone(44100, 500), tone(44100, 5000), [0.0] * 22050])
        self.assert_works("--rate", 48000)
        rate, channels = self.result()
        self.assertEqual(len(channels), 3)
        for channel, own, other in ((channels[0], 500, 5000), (channels[1], 5000, 500)):
            inside = channel[2000:-2000]
            self.assertAlmostEqual(amplitude(inside, rate, own), 0.5, delta=0.001)
            self.assertLess(amplitude(inside, rate, other), 1e-4)
        self.assertEqual(set(channels[2]), {0.0})

    def test_block_length_changes_nothing(self):
        source = random.Random(1)
        write_wav(self.recording, 8000, [[source.uniform(-0.3, 0.3) for _ in range(5000)] for _ in range(2)])
        results = []
        for block in (1, 37, 333, 100000):
            self.assert_works("--rate", 11025, "--block", block)
            results.append(self.result()[1])
        for other in results[1:]:
            for a, b in zip(results[0], other):
                self.assertLessEqual(max(abs(x - y) for x, y in zip(a, b)), 1.01 / 32768)

    def test_short_recordings(self):
        for length in (1, 2, 3, 100):
            write_wav(self.recording, 44100, [[0.25] * length])
            self.assert_works("--rate", 48000)
            self.assertEqual(len(self.result()[1][0]), math.ceil(length * 160 / 147))

    def test_picture(self):
        write_wav(self.recording, 44100, [tone(44100, 5000)])
        self.assert_works("--rate", 32000)
        before, after, gain, unwanted = curves_of(self.out / "picture.svg")
        # The spectrum after the change ends at half the lower rate, and so does the sine in the sweep.
        self.assertLess(after[-1][0], before[-1][0] - 200)
        self.assertAlmostEqual(gain[-1][0], after[-1][0], delta=8)
        self.assertAlmostEqual(unwanted[-1][0], before[-1][0], delta=8)
        # The sine stands at the same place in both spectra.
        peak = [min(curve, key=lambda p: p[1]) for curve in (before, after)]
        self.assertAlmostEqual(peak[0][0], peak[1][0], delta=2)

    def test_clipping_is_told(self):
        write_wav(self.recording, 8000, [[0.99 if i // 8 % 2 else -0.99 for i in range(4000)]])
        self.assertIn("clipped", self.assert_works("--rate", 48000))

    def test_bad_arguments(self):
        write_wav(self.recording, 8000, [tone(8000, 440)])
        for arguments, words in (
                ((), ["no recording"]),
                (("a.wav", "b.wav"), ["a.wav", "b.wav"]),
                (("--loud", self.recording), ["--loud"]),
                ((self.recording, "--rate"), ["--rate"]),
                (("--rate", "0", self.recording), ["--rate"]),
                (("--rate", "44100.5", self.recording), ["whole"]),
                (("--rate", "fast", self.recording), ["fast"]),
                (("--attenuation", "500", self.recording), ["--attenuation"]),
                (("--pass", "nan", self.recording), ["nan"]),
                (("--pass", "99.5", "--rate", "999983", self.recording), ["too long"]),
                (("--block", "0", self.recording), ["--block"]),
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
        for option in ("--rate", "--attenuation", "--pass", "--block", "--out"):
            self.assertIn(option, run.stdout)


if __name__ == "__main__":
    unittest.main()
