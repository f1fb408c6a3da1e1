#!/usr/bin/env python3
"""Runs the example on recordings of many shapes, whole and broken: denoise_test.py [-v] PROGRAM

SPDX-License-Identifier: MIT
"""
import array
import cmath
import math
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import unittest
import wave

PROGRAM = os.path.abspath(sys.argv.pop())


def write_wav(path, rate, channels, samples_of):
    """16 bits; samples_of(channel) gives a list of numbers from -1 to 1."""
    tracks = [samples_of(c) for c in range(channels)]
    data = array.array("h", (round(32767 * sample) for frame in zip(*tracks) for sample in frame))
    with wave.open(str(path), "wb") as out:
        out.setnchannels(channels)
        out.setsampwidth(2)
        out.setframerate(rate)
        out.writeframes(data.tobytes())


def read_wav(path):
    with wave.open(str(path), "rb") as source:
        channels = source.getnchannels()
        data = array.array("h", source.readframes(source.getnframes()))
        return source.getframerate(), [[s / 32768 for s in data[c::channels]] for c in range(channels)]


def level(samples, rate, frequency):
    """The amplitude of a sine in the middle of the samples, in dB of full scale."""
    middle = samples[len(samples) // 4:len(samples) * 3 // 4]
    window = [0.5 - 0.5 * math.cos(2 * math.pi * i / len(middle)) for i in range(len(middle))]
    total = sum(w * s * cmath.exp(-2j * math.pi * frequency / rate * i) for i, (w, s) in enumerate(zip(window, middle)))
    return 20 * math.log10(max(abs(total) * 4 / len(middle), 1e-9))


def chord(rate, seconds):
    """Two tones that the filter lets through, other ones in each channel."""
    def samples_of(channel):
        return [0.2 * math.sin(2 * math.pi * (300 + 40 * channel) * i / rate) +
                0.2 * math.sin(2 * math.pi * 1700 * i / rate) for i in range(round(rate * seconds))]
    return samples_of


class Denoise(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.dir = pathlib.Path(scratch.name)
        self.out = self.dir / "out"

    def denoise(self, *arguments, picture="--no-picture", env=None):
        command = [PROGRAM, *([picture] if picture else []), "--out", str(self.out), *map(str, arguments)]
        return subprocess.run(command, capture_output=True, text=True, errors="replace", timeout=120, env=env)

    def recording(self, rate=8000, channels=1, seconds=0.5):
        path = self.dir / "recording.wav"
        write_wav(path, rate, channels, chord(rate, seconds))
        return path

    def assert_fails(self, run, *words):
        """Status 1, one line on stderr that begins with the program's name and holds the words, nothing on stdout."""
        self.assertEqual(run.returncode, 1, run.stderr)
        self.assertRegex(run.stderr, r"\Adenoise: [^\n]+\n\Z")
        self.assertEqual(run.stdout, "")
        for word in words:
            self.assertIn(word, run.stderr)

    def check_cleaning(self, rate, channels, block):
        path = self.recording(rate, channels, 1.0)
        run = self.denoise("--whistle", 1000, "--hiss", -50, "--block", block, path)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(run.stderr, "")
        self.assertEqual((self.out / "report.txt").read_text(), run.stdout)

        clean_rate, clean = read_wav(self.out / "clean.wav")
        disturbed_rate, disturbed = read_wav(self.out / "disturbed.wav")
        filtered_rate, filtered = read_wav(self.out / "filtered.wav")
        self.assertEqual((clean_rate, disturbed_rate, filtered_rate), (rate,) * 3)
        self.assertEqual([len(t) for t in filtered], [rate] * channels)
        self.assertEqual(clean, read_wav(path)[1])
        for c in range(channels):
            self.assertAlmostEqual(level(disturbed[c], rate, 1000), -20, delta=0.2)
            # 16 bits and half a second have no room for more.
            self.assertLess(level(filtered[c], rate, 1000), -80)
            for tone in (300 + 40 * c, 1700):
                self.assertAlmostEqual(level(filtered[c], rate, tone), level(clean[c], rate, tone), delta=0.1)
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
        path = self.recording(8000, 1, 1.0)
        results = []
        for block in (1, 333, 100000):
            self.assertEqual(self.denoise("--whistle", 1000, "--block", block, path).returncode, 0)
            results.append(read_wav(self.out / "filtered.wav")[1][0])
        for other in results[1:]:
            self.assertLessEqual(max(abs(a - b) for a, b in zip(results[0], other)), 1 / 32768)

    def test_shorter_than_the_filter(self):
        path = self.dir / "short.wav"
        write_wav(path, 8000, 1, lambda c: [0.5])
        self.assertEqual(self.denoise("--notch", 1000, path).returncode, 0)
        self.assertEqual(len(read_wav(self.out / "filtered.wav")[1][0]), 1)

    def test_silence(self):
        path = self.dir / "silence.wav"
        write_wav(path, 8000, 2, lambda c: [0.0] * 4000)
        for disturbed in ([], ["--whistle", 1000], ["--hiss", -50]):
            run = self.denoise("--notch", 1000, *disturbed, path)
            self.assertEqual(run.returncode, 0, run.stderr)
            self.assertNotRegex(run.stdout, r"\b(nan|inf)\b")
            self.assertTrue(disturbed or "there is none" in run.stdout)

    @unittest.skipUnless(shutil.which("gnuplot"), "there is no gnuplot")
    def test_picture(self):
        run = self.denoise("--whistle", 1000, "--hiss", -40, self.recording(44100, 2), picture=None)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertTrue((self.out / "picture.png").read_bytes().startswith(b"\x89PNG"))

    def test_no_gnuplot(self):
        run = self.denoise("--notch", 1000, self.recording(), picture=None, env={"PATH": str(self.dir)})
        self.assertEqual(run.returncode, 0)
        self.assertIn("gnuplot is not there", run.stderr)
        self.assertTrue((self.out / "filtered.wav").exists())

    def test_missing_file(self):
        self.assert_fails(self.denoise("--notch", 1000, self.dir / "missing.wav"), "missing.wav", "No such file")

    def test_directory(self):
        self.assert_fails(self.denoise("--notch", 1000, self.dir))

    def test_empty_file(self):
        path = self.dir / "empty.wav"
        path.touch()
        self.assert_fails(self.denoise("--notch", 1000, path), "empty.wav")

    def test_no_samples(self):
        path = self.dir / "none.wav"
        write_wav(path, 8000, 1, lambda c: [])
        self.assert_fails(self.denoise("--notch", 1000, path), "none.wav", "no samples")

    def test_garbage(self):
        path = self.dir / "garbage.wav"
        path.write_bytes(random.Random(1).randbytes(5000))
        self.assert_fails(self.denoise("--notch", 1000, path), "garbage.wav")

    def test_header_cut_off(self):
        whole = self.recording().read_bytes()
        path = self.dir / "cut.wav"
        for size in (4, 11, 20, 30, 43):
            path.write_bytes(whole[:size])
            self.assert_fails(self.denoise("--notch", 1000, path), "cut.wav")

    def test_samples_that_are_no_numbers(self):
        path = self.dir / "nan.wav"
        samples = array.array("f", [0.0, math.nan] * 100).tobytes()
        form = (3).to_bytes(2, "little") + (1).to_bytes(2, "little") + (8000).to_bytes(4, "little") + \
            (32000).to_bytes(4, "little") + (4).to_bytes(2, "little") + (32).to_bytes(2, "little")
        body = b"WAVEfmt " + len(form).to_bytes(4, "little") + form + \
            b"data" + len(samples).to_bytes(4, "little") + samples
        path.write_bytes(b"RIFF" + len(body).to_bytes(4, "little") + body)
        self.assert_fails(self.denoise("--notch", 1000, path), "nan.wav", "not numbers")

    def test_bad_options(self):
        path = self.recording()
        for arguments in (["--whistel", "1000", path], ["--notch"], ["--notch", "loud", path], ["--notch", "-5", path],
                          ["--notch", "nan", path], ["--notch", "1000Hz", path], ["--hiss", "3", path],
                          ["--taps", "100", path], ["--taps", "10.5", path], ["--block", "0", path], [path, path], []):
            with self.subTest(arguments=arguments):
                self.assert_fails(self.denoise(*arguments))
        self.assertFalse(self.out.exists())

    def test_frequency_beyond_half_the_sample_rate(self):
        for option in ("--whistle", "--notch"):
            self.assert_fails(self.denoise(option, 4000, self.recording()), "4000 Hz", "8000")
        self.assert_fails(self.denoise(self.recording()), "nothing to filter out")

    def test_unwritable_output(self):
        self.out.touch()
        self.assert_fails(self.denoise("--notch", 1000, self.recording()), "cannot make the directory")
        self.out.unlink()
        (self.out / "filtered.wav").mkdir(parents=True)
        run = self.denoise("--notch", 1000, self.recording())
        self.assertEqual(run.returncode, 1)
        self.assertIn("cannot write", run.stderr)

    def test_help(self):
        run = self.denoise("--help")
        self.assertEqual(run.returncode, 0)
        self.assertTrue(run.stdout.startswith("usage: denoise"))


if __name__ == "__main__":
    unittest.main()
