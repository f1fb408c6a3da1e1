#!/usr/bin/env python3
"""Runs the example on recordings of many shapes, whole and broken: denoise_test.py [-v] PROGRAM

SPDX-License-Identifier: MIT
"""
import array
import math
import pathlib
import random
import shutil
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "support"))
from example_test import ExampleTest, level, read_wav, write_wav  # noqa: E402


def chords(rate, channels, seconds):
    """Two tones that the filter lets through, other ones in each channel."""
    return [[0.2 * math.sin(2 * math.pi * (300 + 40 * channel) * i / rate) +
             0.2 * math.sin(2 * math.pi * 1700 * i / rate) for i in range(round(rate * seconds))]
            for channel in range(channels)]


def inner_level(samples, rate, frequency):
    return level(samples[len(samples) // 4:len(samples) * 3 // 4], rate, frequency)


class Denoise(ExampleTest):
    def run_program(self, *arguments, picture="--no-picture", env=None):
        return super().run_program(*([picture] if picture else []), *arguments, env=env)

    def record(self, rate=8000, channels=1, seconds=0.5):
        write_wav(self.recording, rate, chords(rate, channels, seconds))
        return self.recording

    def check_cleaning(self, rate, channels, block):
        path = self.record(rate, channels, 1.0)
        self.assert_works("--whistle", 1000, "--hiss", -50, "--block", block, path)
        clean_rate, clean = read_wav(self.out / "clean.wav")
        disturbed_rate, disturbed = read_wav(self.out / "disturbed.wav")
        filtered_rate, filtered = read_wav(self.out / "filtered.wav")
        self.assertEqual((clean_rate, disturbed_rate, filtered_rate), (rate,) * 3)
        self.assertEqual([len(t) for t in filtered], [rate] * channels)
        self.assertEqual(clean, read_wav(path)[1])
        for c in range(channels):
            self.assertAlmostEqual(inner_level(disturbed[c], rate, 1000), -20, delta=0.2)
            # 16 bits and half a second have no room for more.
            self.assertLess(inner_level(filtered[c], rate, 1000), -80)
            for tone in (300 + 40 * c, 1700):
                before = inner_level(clean[c], rate, tone)
                self.assertAlmostEqual(inner_level(filtered[c], rate, tone), before, delta=0.1)
            # Nothing is late: what the filter leaves lies under the original sample by sample.
            third = slice(rate // 3, 2 * rate // 3)
            noise = sum((a - b) ** 2 for a, b in zip(filtered[c][third], clean[c][third]))
            signal = sum(a * a for a in clean[c][third])
            self.assertGreater(10 * math.log10(signal / noise), 30)

    def test_mono_8_khz(self):
        self.check_cleaning(8000, 1, 801)

    def test_stereo_44_khz(self):
        self.check_cleaning(44100, 2, 4801)

    def test_three_channels_16_khz_in_tiny_blocks(self):
        self.check_cleaning(16000, 3, 7)

    def test_block_length_changes_nothing(self):
        path = self.record(8000, 1, 1.0)
        results = []
        for block in (1, 333, 100000):
            self.assertEqual(self.run_program("--whistle", 1000, "--block", block, path).returncode, 0)
            results.append(read_wav(self.out / "filtered.wav")[1][0])
        for other in results[1:]:
            self.assertLessEqual(max(abs(a - b) for a, b in zip(results[0], other)), 1 / 32768)

    def test_shorter_than_the_filter(self):
        path = self.dir / "short.wav"
        write_wav(path, 8000, [[0.5]])
        self.assertEqual(self.run_program("--notch", 1000, path).returncode, 0)
        self.assertEqual(len(read_wav(self.out / "filtered.wav")[1][0]), 1)

    def test_silence(self):
        path = self.dir / "silence.wav"
        write_wav(path, 8000, [[0.0] * 4000] * 2)
        for disturbed in ([], ["--whistle", 1000], ["--hiss", -50]):
            run = self.run_program("--notch", 1000, *disturbed, path)
            self.assertEqual(run.returncode, 0, run.stderr)
            self.assertNotRegex(run.stdout, r"\b(nan|inf)\b")
            self.assertTrue(disturbed or "there is none" in run.stdout)

    @unittest.skipUnless(shutil.which("gnuplot"), "there is no gnuplot")
    def test_picture(self):
        run = self.run_program("--whistle", 1000, "--hiss", -40, self.record(44100, 2), picture=None)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertTrue((self.out / "picture.png").read_bytes().startswith(b"\x89PNG"))

    def test_no_gnuplot(self):
        run = self.run_program("--notch", 1000, self.record(), picture=None, env={"PATH": str(self.dir)})
        self.assertEqual(run.returncode, 0)
        self.assertIn("gnuplot is not there", run.stderr)
        self.assertTrue((self.out / "filtered.wav").exists())

    def test_missing_file(self):
        self.assert_fails("--notch", 1000, self.dir / "missing.wav", words=["missing.wav", "No such file"])

    def test_directory(self):
        self.assert_fails("--notch", 1000, self.dir)

    def test_empty_file(self):
        path = self.dir / "empty.wav"
        path.touch()
        self.assert_fails("--notch", 1000, path, words=["empty.wav"])

    def test_no_samples(self):
        path = self.dir / "none.wav"
        write_wav(path, 8000, [[]])
        self.assert_fails("--notch", 1000, path, words=["none.wav", "no samples"])

    def test_garbage(self):
        path = self.dir / "garbage.wav"
        path.write_bytes(random.Random(1).randbytes(5000))
        self.assert_fails("--notch", 1000, path, words=["garbage.wav"])

    def test_header_cut_off(self):
        whole = self.record().read_bytes()
        path = self.dir / "cut.wav"
        for size in (4, 11, 20, 30, 43):
            path.write_bytes(whole[:size])
            self.assert_fails("--notch", 1000, path, words=["cut.wav"])

    def test_samples_that_are_no_numbers(self):
        path = self.dir / "nan.wav"
        samples = array.array("f", [0.0, math.nan] * 100).tobytes()
        form = (3).to_bytes(2, "little") + (1).to_bytes(2, "little") + (8000).to_bytes(4, "little") + \
            (32000).to_bytes(4, "little") + (4).to_bytes(2, "little") + (32).to_bytes(2, "little")
        body = b"WAVEfmt " + len(form).to_bytes(4, "little") + form + \
            b"data" + len(samples).to_bytes(4, "little") + samples
        path.write_bytes(b"RIFF" + len(body).to_bytes(4, "little") + body)
        self.assert_fails("--notch", 1000, path, words=["nan.wav", "not numbers"])

    def test_bad_options(self):
        path = self.record()
        for arguments in (["--whistel", "1000", path], ["--notch"], ["--notch", "loud", path], ["--notch", "-5", path],
                          ["--notch", "nan", path], ["--notch", "1000Hz", path], ["--hiss", "3", path],
                          ["--taps", "100", path], ["--taps", "10.5", path], ["--block", "0", path], [path, path], []):
            with self.subTest(arguments=arguments):
                self.assert_fails(*arguments)
        self.assertFalse(self.out.exists())

    def test_frequency_beyond_half_the_sample_rate(self):
        for option in ("--whistle", "--notch"):
            self.assert_fails(option, 4000, self.record(), words=["4000 Hz", "8000"])
        self.assert_fails(self.record(), words=["nothing to filter out"])

    def test_unwritable_output(self):
        self.out.touch()
        self.assert_fails("--notch", 1000, self.record(), words=["cannot make the directory"])
        self.out.unlink()
        (self.out / "filtered.wav").mkdir(parents=True)
        run = self.run_program("--notch", 1000, self.record())
        self.assertEqual(run.returncode, 1)
        self.assertIn("cannot write", run.stderr)

    def test_help(self):
        run = self.run_program("--help")
        self.assertEqual(run.returncode, 0)
        self.assertTrue(run.stdout.startswith("usage: denoise"))


if __name__ == "__main__":
    unittest.main()
