# SPDX-License-Identifier: MIT
"""What the tests of the examples share: recordings, the amplitude of a sine in one, and a program that is run."""
import array
import cmath
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import wave
import xml.etree.ElementTree

# The last argument is the program; the others are unittest's.
PROGRAM = os.path.abspath(sys.argv.pop())


def write_wav(path, rate, tracks):
    """16 bits; tracks are lists of numbers from -1 to 1, one for each channel."""
    data = array.array("h", (round(32767 * sample) for frame in zip(*tracks) for sample in frame))
    with wave.open(str(path), "wb") as out:
        out.setnchannels(len(tracks))
        out.setsampwidth(2)
        out.setframerate(rate)
        out.writeframes(data.tobytes())


def read_wav(path):
    """The rate, and the samples of each channel as numbers from -1 to 1."""
    with wave.open(str(path), "rb") as source:
        channels = source.getnchannels()
        data = array.array("h", source.readframes(source.getnframes()))
        return source.getframerate(), [[s / 32768 for s in data[c::channels]] for c in range(channels)]


def amplitude(samples, rate, frequency):
    """Of a sine, under a Hann window."""
    window = [0.5 - 0.5 * math.cos(2 * math.pi * i / len(samples)) for i in range(len(samples))]
    step = -2j * math.pi * frequency / rate
    return abs(sum(w * s * cmath.exp(step * i) for i, (w, s) in enumerate(zip(window, samples)))) * 4 / len(samples)


def level(samples, rate, frequency):
    """The same in dB of full scale, at least -180."""
    return 20 * math.log10(max(amplitude(samples, rate, frequency), 1e-9))


def curves_of(picture):
    """The points of the curves in an SVG file."""
    root = xml.etree.ElementTree.parse(picture).getroot()
    return [[tuple(map(float, point.split(","))) for point in curve.get("points").split()]
            for curve in root.findall("{http://www.w3.org/2000/svg}polyline")]


class ExampleTest(unittest.TestCase):
    """A program that writes what it makes, and what it says as report.txt, to a directory of its own."""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.dir = pathlib.Path(scratch.name)
        self.out = self.dir / "out"
        self.recording = self.dir / "recording.wav"

    def run_program(self, *arguments, env=None):
        command = [PROGRAM, "--out", str(self.out), *map(str, arguments)]
        return subprocess.run(command, capture_output=True, text=True, errors="replace", timeout=120, env=env)

    def assert_works(self, *arguments):
        """What it prints; stderr is empty, for there is no bar where there is no terminal."""
        run = self.run_program(*arguments)
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertEqual(run.stderr, "")
        self.assertEqual((self.out / "report.txt").read_text(), run.stdout)
        return run.stdout

    def assert_fails(self, *arguments, words=(), env=None):
        """Status 1, one line on stderr that begins with the program's name and holds the words, nothing on stdout."""
        run = self.run_program(*arguments, env=env)
        self.assertEqual(run.returncode, 1, run.stderr)
        self.assertRegex(run.stderr, rf"\A{os.path.basename(PROGRAM)}: [^\n]+\n\Z")
        self.assertEqual(run.stdout, "")
        for word in words:
            self.assertIn(word, run.stderr)
