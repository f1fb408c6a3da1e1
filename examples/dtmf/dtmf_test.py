#!/usr/bin/env python3
"""Runs the example on recordings of many shapes, whole and broken: dtmf_test.py [-v] PROGRAM

SPDX-License-Identifier: MIT
"""
import math
import pathlib
import random
import re
import sys
import unittest
import xml.etree.ElementTree

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "support"))
from example_test import ExampleTest, curves_of, read_wav, write_wav  # noqa: E402

KEYS = "123A456B789C*0#D"
LOW, HIGH = (697, 770, 852, 941), (1209, 1336, 1477, 1633)


def tones(rate, seconds, *amplitudes_and_frequencies):
    return [sum(a * math.sin(2 * math.pi * f * i / rate + 1) for a, f in amplitudes_and_frequencies)
            for i in range(round(rate * seconds))]


def dialled(rate, keys, seconds=0.08, pause=0.06, low=0.1, high=0.1, off=1.0):
    """By the definition of the tones: no line of the example or the library."""
    silence = [0.0] * round(rate * pause)
    track = list(silence)
    for key in keys:
        row, column = divmod(KEYS.index(key), 4)
        track += tones(rate, seconds, (low, LOW[row] * off), (high, HIGH[column] * off)) + silence
    return track


class Dtmf(ExampleTest):
    def digits(self, report, channel=""):
        return re.search(rf"^digits{channel} +(\S+)$", report, re.M).group(1)

    def digits_of(self, rate, *tracks):
        write_wav(self.recording, rate, tracks)
        return self.digits(self.assert_works(self.recording))

    def test_all_keys_at_many_rates(self):
        for rate in (8000, 11025, 16000, 22050, 44100, 48000):
            with self.subTest(rate=rate):
                self.assertEqual(self.digits_of(rate, dialled(rate, KEYS)), KEYS)

    def test_the_same_key_again(self):
        self.assertEqual(self.digits_of(8000, dialled(8000, "1111000")), "1111000")

    def test_long_and_short_tones(self):
        self.assertEqual(self.digits_of(8000, dialled(8000, "159D", seconds=1.5)), "159D")
        self.assertEqual(self.digits_of(8000, dialled(8000, "159D", seconds=0.055, pause=0.05)), "159D")

    def test_tones_a_little_off_and_of_different_strength(self):
        for off in (0.985, 1.015):
            self.assertEqual(self.digits_of(8000, dialled(8000, "02468", off=off)), "02468")
        self.assertEqual(self.digits_of(8000, dialled(8000, "02468", low=0.1, high=0.05)), "02468")
        self.assertEqual(self.digits_of(8000, dialled(8000, "02468", low=0.02, high=0.03)), "02468")

    def test_what_is_no_digit(self):
        source = random.Random(1)
        for name, track in (
                ("silence", [0.0] * 8000),
                ("noise", [source.uniform(-0.3, 0.3) for _ in range(16000)]),
                ("one tone", tones(8000, 1, (0.2, 770))),
                ("a dialling tone", tones(8000, 1, (0.2, 350), (0.2, 440))),
                ("two of a group", tones(8000, 1, (0.2, 697), (0.2, 852))),
                ("very unequal", tones(8000, 1, (0.2, 697), (0.02, 1209))),
                ("far off", tones(8000, 1, (0.2, 697 * 1.06), (0.2, 1209 * 1.06))),
                ("harmonics", tones(8000, 1, *((0.1, 697 * k) for k in (1, 2, 3)), (0.1, 1209), (0.1, 2418))),
                ("an instant", [0.0] * 4000 + tones(8000, 0.01, (0.2, 697), (0.2, 1209)) + [0.0] * 4000),
                ("shorter than a frame", [0.1] * 50)):
            with self.subTest(name=name):
                self.assertEqual(self.digits_of(8000, track), "none")

    def test_channels_by_themselves(self):
        write_wav(self.recording, 8000, [dialled(8000, "123"), dialled(8000, "#*0")])
        report = self.assert_works(self.recording)
        self.assertEqual((self.digits(report, " 1"), self.digits(report, " 2")), ("123", "#*0"))
        self.assertTrue((self.out / "levels2.svg").exists())

    def test_times(self):
        write_wav(self.recording, 8000, [dialled(8000, "47", seconds=0.2, pause=0.1)])
        times = re.findall(r"(\d) from (\S+) to (\S+) s", self.assert_works(self.recording))
        for (key, begin, end), (want, at) in zip(times, (("4", 0.1), ("7", 0.4)), strict=True):
            self.assertEqual(key, want)
            self.assertAlmostEqual(float(begin), at, delta=0.026)
            self.assertAlmostEqual(float(end), at + 0.2, delta=0.026)

    def test_dialling(self):
        report = self.assert_works("--dial", "0123456789*#ABCD", "--tone", 60, "--pause", 50)
        self.assertEqual(self.digits(report), "0123456789*#ABCD")
        rate, (samples,) = read_wav(self.out / "dialled.wav")
        self.assertEqual((rate, len(samples)), (8000, 400 + 16 * 880))
        # The first 50 ms are a pause; each tone then is 6000 of 32768, as mu-law has it.
        self.assertLess(max(map(abs, samples[:400])), 0.001)
        self.assertAlmostEqual(max(samples), 2 * 6000 / 32768, delta=0.02)
        power = sum(s * s for s in samples[400:880]) / 480
        self.assertAlmostEqual(10 * math.log10(power / (6000 / 32768) ** 2), 0, delta=0.3)

    def test_noise_has_its_level(self):
        power = {}
        for level in (3, 13):
            self.assert_works("--dial", "1", "--noise", level, "--pause", 2000)
            samples = read_wav(self.out / "dialled.wav")[1][0][:16000]
            power[level] = sum(s * s for s in samples) / len(samples)
        self.assertAlmostEqual(10 * math.log10((6000 / 32768) ** 2 / power[3]), 3, delta=0.3)
        self.assertAlmostEqual(10 * math.log10(power[3] / power[13]), 10, delta=0.5)

    def test_a_voice_under_the_tones(self):
        # A sawtooth of 140 Hz at another rate; its power is that of the voice, 12 dB below the tones'.
        rate = 44100
        write_wav(self.recording, rate, [[(i * 140 / rate) % 1 - 0.5 for i in range(rate)]])
        report = self.assert_works("--dial", "8086", "--voice", self.recording, "--voice-level", 12, "--pause", 1000)
        self.assertEqual(self.digits(report), "8086")
        samples = read_wav(self.out / "dialled.wav")[1][0][2000:8000]
        power = sum(s * s for s in samples) / len(samples)
        self.assertAlmostEqual(10 * math.log10((6000 / 32768) ** 2 / power), 12, delta=0.5)

    def test_errors(self):
        report = self.assert_works("--errors")
        rates = {int(db): float(share) for db, share in re.findall(r"([+-]\d+) dB: +(\S+) %", report)}
        self.assertEqual(sorted(rates), list(range(-15, 16)))
        self.assertLess(max(rates[db] for db in range(3, 16)), 1)
        self.assertGreater(rates[-12], 90)
        curve, = curves_of(self.out / "errors.svg")
        self.assertEqual(len(curve), 31)

    def test_errors_with_a_voice(self):
        write_wav(self.recording, 8000, [[(i * 140 / 8000) % 1 - 0.5 for i in range(8000)]])
        self.assertIn("voice", self.assert_works("--errors", "--voice", self.recording))
        self.assertEqual(len(curves_of(self.out / "errors.svg")), 2)

    def test_picture(self):
        write_wav(self.recording, 8000, [dialled(8000, "1D")])
        self.assert_works(self.recording)
        curves = curves_of(self.out / "levels.svg")
        self.assertEqual(len(curves), 8)
        picture = xml.etree.ElementTree.parse(self.out / "levels.svg").getroot()
        words = [text.text for text in picture.findall("{http://www.w3.org/2000/svg}text")]
        for word in ("697 Hz", "1633 Hz", "1", "D", "recording.wav"):
            self.assertIn(word, words)
        # The strips of the four tones that were there reach higher than the others.
        heights = []
        for curve in curves:
            ys = [y for _, y in curve]
            heights.append(max(ys) - min(ys))
        self.assertGreater(min(heights[k] for k in (0, 3, 4, 7)), 30)

    def test_bad_arguments(self):
        write_wav(self.recording, 8000, [dialled(8000, "1")])
        for arguments, words in (
                ((), ["--dial", "--errors"]),
                (("a.wav", "b.wav"), ["a.wav", "b.wav"]),
                (("--dial", "1", "--errors"), ["one of"]),
                (("--dial", "12x"), ['"x"']),
                (("--dial", ""), ["key"]),
                (("--dial",), ["--dial"]),
                (("--loud", self.recording), ["--loud"]),
                (("--dial", "1", "--noise", "loud"), ["loud"]),
                (("--dial", "1", "--noise", "nan"), ["nan"]),
                (("--dial", "1", "--tone", "0"), ["--tone"]),
                (("--dial", "1", "--voice", self.dir / "missing.wav"), ["missing.wav"]),
                ((self.dir / "missing.wav",), ["missing.wav"])):
            with self.subTest(arguments=arguments):
                self.assert_fails(*arguments, words=words)

    def test_rates_without_room(self):
        write_wav(self.recording, 3000, [[0.0] * 3000])
        run = self.run_program(self.recording)
        self.assertEqual(run.returncode, 1)
        self.assertIn("4000", run.stderr)

    def test_broken_recordings(self):
        self.recording.write_bytes(b"RIFF no sound")
        self.assert_fails(self.recording, words=["recording.wav"])

    def test_place_that_cannot_be_written(self):
        self.out.write_text("a file")
        self.assert_fails("--dial", "1", words=["out"])

    def test_help(self):
        run = self.run_program("--help")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        for option in ("--dial", "--noise", "--voice", "--voice-level", "--tone", "--pause", "--errors", "--out"):
            self.assertIn(option, run.stdout)


if __name__ == "__main__":
    unittest.main()
