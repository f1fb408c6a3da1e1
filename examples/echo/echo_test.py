#!/usr/bin/env python3
"""Runs the example on recordings of many shapes, whole and broken: echo_test.py [-v] PROGRAM

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

RATE = 8000


def noise(seed, seconds=1.0, amplitude=0.3, rate=RATE):
    source = random.Random(seed)
    return [source.uniform(-amplitude, amplitude) for _ in range(round(rate * seconds))]


def power_db(samples):
    return 10 * math.log10(max(sum(s * s for s in samples) / len(samples), 1e-20))


class Echo(ExampleTest):
    def setUp(self):
        super().setUp()
        self.voice = self.dir / "voice.wav"

    def sounds(self):
        """Rate, and microphone and result channel by channel."""
        rate, microphone = read_wav(self.out / "microphone.wav")
        rate_after, cancelled = read_wav(self.out / "cancelled.wav")
        self.assertEqual(rate, rate_after)
        return rate, list(zip(microphone, cancelled))

    def attenuation(self, report):
        return float(re.search(r"attenuated by (\S+) dB", report).group(1))

    def test_takes_the_echo_out(self):
        write_wav(self.recording, RATE, [noise(1)])
        report = self.assert_works("--taps", 800, self.recording)
        rate, [(before, after)] = self.sounds()
        self.assertEqual((rate, len(before), len(after)), (RATE, 4 * RATE, 4 * RATE))
        self.assertGreater(self.attenuation(report), 35)
        # At first little is known of the room.
        self.assertAlmostEqual(power_db(before[:100]), power_db(after[:100]), delta=4)
        self.assertLess(power_db(after[3 * RATE:]), power_db(before[3 * RATE:]) - 35)
        # The echo is as loud as it was asked for.
        self.assertAlmostEqual(power_db(before[RATE:]) - power_db(noise(1)), -12, delta=1)

    def test_steps(self):
        """What is learnt more slowly is less after the same time, and without a step nothing is learnt."""
        write_wav(self.recording, RATE, [noise(2)])
        by_step = [self.attenuation(self.assert_works("--step", step, self.recording)) for step in (0, 0.05, 0.5)]
        self.assertEqual(by_step[0], 0)
        self.assertGreater(by_step[1], 3)
        self.assertGreater(by_step[2], by_step[1] + 10)
        self.assert_works("--step", 0, self.recording)
        _, [(before, after)] = self.sounds()
        self.assertEqual(before, after)

    def test_few_taps_miss_the_end_of_the_echo(self):
        write_wav(self.recording, RATE, [noise(3)])
        few = self.attenuation(self.assert_works("--taps", 100, self.recording))
        many = self.attenuation(self.assert_works("--taps", 800, self.recording))
        self.assertGreater(few, 5)
        self.assertGreater(many, few + 10)

    def test_a_voice_stays(self):
        write_wav(self.recording, RATE, [noise(4)])
        write_wav(self.voice, RATE, [[0.2 * math.sin(2 * math.pi * 700 * i / RATE) for i in range(RATE)]])
        report = self.assert_works(self.recording, self.voice)
        self.assertRegex(report, r"voice +\S+ dB above the echo before")
        _, [(before, after)] = self.sounds()
        last = slice(3 * RATE, 4 * RATE)
        self.assertAlmostEqual(level(before[last], RATE, 700), 20 * math.log10(0.2), delta=0.5)
        self.assertAlmostEqual(level(after[last], RATE, 700), 20 * math.log10(0.2), delta=0.5)
        self.assertGreater(self.attenuation(report), 15)

    def test_channels_have_places_of_their_own(self):
        write_wav(self.recording, RATE, [noise(5), [0.0] * RATE, noise(6)])
        self.assert_works("--noise", -90, self.recording)
        _, channels = self.sounds()
        self.assertEqual(len(channels), 3)
        for c in (0, 2):
            self.assertLess(power_db(channels[c][1][3 * RATE:]), power_db(channels[c][0][3 * RATE:]) - 30)
        self.assertLess(power_db(channels[1][0]), -80)
        self.assertNotEqual(channels[0], channels[2])

    def test_block_lengths(self):
        write_wav(self.recording, RATE, [noise(7, 0.5)])
        for block in (1, 7, 64, 1000, 100000):
            report = self.assert_works("--block", block, "--times", 2, "--reverberation", 0.02, self.recording)
            self.assertGreater(self.attenuation(report), 3 if block > 10000 else 15)

    def test_picture(self):
        write_wav(self.recording, RATE, [noise(8)])
        write_wav(self.voice, RATE, [noise(9, 0.3)])
        for arguments, curves in (((self.recording,), 4), ((self.recording, self.voice), 5)):
            self.assert_works(*arguments)
            drawn = curves_of(self.out / "picture.svg")
            self.assertEqual(len(drawn), curves)
            self.assertEqual(len(drawn[0]), 200)  # four seconds by 20 ms
            # What is left lies lower in the end, by time and by frequency.
            echo, left, echo_at, left_at = drawn[-4:]
            self.assertGreater(left[140][1], echo[140][1] + 50)
            for (_, y), (_, y_left) in zip(echo_at, left_at):
                self.assertGreater(y_left, y + 20)

    def test_same_again(self):
        write_wav(self.recording, RATE, [noise(10, 0.3)])
        self.assert_works(self.recording)
        first = self.sounds()
        self.assert_works(self.recording)
        self.assertEqual(first, self.sounds())

    def test_silence_and_short_recordings(self):
        for samples in ([0.0] * 4000, [0.0], [0.5], noise(11, 0.01)):
            write_wav(self.recording, RATE, [samples])
            report = self.assert_works(self.recording)
            self.assertNotRegex(report, r"\b(nan|inf)\b")
            self.assertEqual(len(self.sounds()[1][0][0]), 4 * len(samples))
            self.assertNotRegex((self.out / "picture.svg").read_text(), r"\b(nan|inf)\b")

    def test_bad_arguments(self):
        write_wav(self.recording, RATE, [noise(12, 0.1)])
        write_wav(self.voice, 16000, [noise(13, 0.1, rate=16000)])
        for arguments, words in (
                ((), ["no recording"]),
                ((self.recording, self.recording, "c.wav"), ["c.wav"]),
                ((self.recording, self.voice), ["voice.wav", "16000", "8000"]),
                (("--loud", self.recording), ["--loud"]),
                ((self.recording, "--taps"), ["--taps"]),
                (("--taps", "0", self.recording), ["--taps"]),
                (("--taps", "1.5", self.recording), ["whole"]),
                (("--step", "1.1", self.recording), ["--step"]),
                (("--step", "nan", self.recording), ["nan"]),
                (("--reverberation", "0", self.recording), ["--reverberation"]),
                (("--level", "loud", self.recording), ["loud"]),
                (("--times", "0", self.recording), ["--times"]),
                ((self.dir / "missing.wav",), ["missing.wav"]),
                ((self.recording, self.dir / "missing.wav"), ["missing.wav"])):
            with self.subTest(arguments=arguments):
                self.assert_fails(*arguments, words=words)
                self.assertFalse(self.out.exists())

    def test_broken_recordings(self):
        self.recording.write_bytes(b"RIFF no sound")
        self.assert_fails(self.recording, words=["recording.wav"])

    def test_place_that_cannot_be_written(self):
        write_wav(self.recording, RATE, [noise(14, 0.1)])
        self.out.write_text("a file")
        self.assert_fails(self.recording, words=["out"])

    def test_help(self):
        run = self.run_program("--help")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        for option in ("--reverberation", "--distance", "--level", "--noise", "--times", "--taps", "--step", "--block",
                       "--out"):
            self.assertIn(option, run.stdout)


if __name__ == "__main__":
    unittest.main()
