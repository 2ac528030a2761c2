#!/usr/bin/env python3
"""Synthesise night_walk, the sound that skinplayer plays when it is given no file.

usage: make_sound.py night_walk.wav     write 16-bit stereo PCM
       make_sound.py night_walk.ogg     the same, encoded by oggenc (vorbis-tools), with its tags and its cover, which
                                        rsvg-convert (librsvg2-bin) renders

Only the standard library is used besides and nothing is random between two runs, so everyone gets the same samples.
"""

import array
import base64
import cmath
import math
import pathlib
import random
import struct
import subprocess
import sys
import tempfile
import wave

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

import picture  # noqa: E402
from sounds import cover  # noqa: E402

RATE = 44100
BEAT = 0.75  # seconds; 80 beats a minute
BAR = 4 * BEAT
TAIL = 2.8  # seconds that the last chord may ring on
FADE_IN = 0.08
FADE_OUT = 2.6
PEAK = 0.80  # of full scale: leaves room for what lossy encoding adds

# One row a chord: length in beats, bass note, pad notes, arpeggio in quavers. Notes are MIDI numbers.
CHORDS = [
    (4, 47, (54, 57, 61, 62), (59, 66, 73, 74, 78, 74, 73, 66)),  # Bm9
    (4, 43, (57, 59, 62, 66), (55, 62, 69, 71, 78, 71, 69, 62)),  # Gmaj9
    (4, 42, (57, 62, 64, 66), (57, 62, 69, 74, 76, 74, 69, 64)),  # Dadd9 over F#
    (4, 45, (57, 59, 62, 64), (57, 64, 71, 74, 76, 74, 71, 64)),  # Asus with the ninth
    (2, 43, (55, 59, 62, 66), (55, 62, 66, 71)),  # Gmaj7
    (2, 45, (57, 61, 64, 71), (57, 64, 69, 73)),  # Aadd9
    (4, 38, (54, 57, 62, 64), (50, 57, 62, 64, 66, 69, 74, 76)),  # Dadd9
]

# Bar, beat, note, loudness.
MELODY = [
    (0, 2.0, 78, 0.9), (0, 3.0, 76, 0.7), (0, 3.5, 74, 0.7),
    (1, 0.0, 74, 0.9), (1, 1.5, 73, 0.6), (1, 2.0, 69, 0.8),
    (2, 1.0, 78, 0.8), (2, 2.0, 81, 1.0), (2, 3.0, 76, 0.8),
    (3, 0.0, 76, 0.8), (3, 1.5, 74, 0.7), (3, 2.0, 71, 0.8),
    (4, 0.5, 74, 0.7), (4, 1.0, 76, 0.8), (4, 1.5, 78, 0.8), (4, 2.0, 81, 1.0), (4, 3.0, 76, 0.8),
    (5, 0.0, 78, 1.0), (5, 2.0, 86, 0.45), (5, 3.0, 81, 0.35),
]


def frequency(note):
    return 440.0 * 2.0 ** ((note - 69) / 12.0)


class Stereo:
    """Two channels of samples that voices are added to."""

    def __init__(self, seconds):
        frames = int(seconds * RATE)
        self.left = array.array("d", bytes(8 * frames))
        self.right = array.array("d", bytes(8 * frames))

    def __len__(self):
        return len(self.left)

    def add(self, start, samples, loudness, pan):
        """Mix mono samples in at a time in seconds; pan goes from 0 (left) to 1 (right) at equal power."""
        first = int(start * RATE)
        gain_left = loudness * math.cos(pan * math.pi / 2)
        gain_right = loudness * math.sin(pan * math.pi / 2)
        for index, sample in enumerate(samples[:len(self) - first], first):
            self.left[index] += gain_left * sample
            self.right[index] += gain_right * sample

    def mix(self, other, loudness):
        self.left = array.array("d", (a + loudness * b for a, b in zip(self.left, other.left)))
        self.right = array.array("d", (a + loudness * b for a, b in zip(self.right, other.right)))


def harmonics_table(amplitudes, size=65536):
    """One period of a tone with these amplitudes of its harmonics."""
    return [sum(amplitude * math.sin(2 * math.pi * (k + 1) * i / size) for k, amplitude in enumerate(amplitudes))
            for i in range(size)]


PAD_TABLE = harmonics_table([1.0, 0.42, 0.20, 0.09, 0.05, 0.02])
BASS_TABLE = harmonics_table([1.0, 0.35, 0.10, 0.04])


def held_tone(table, hertz, seconds, attack, release):
    """A tone that swells for `attack` seconds and dies away during the last `release` seconds."""
    frames = int(seconds * RATE)
    size = len(table)
    step = hertz * size / RATE
    samples = [table[int(i * step) % size] for i in range(frames)]
    rising, falling = int(attack * RATE), int(release * RATE)
    for i in range(min(rising, frames)):
        samples[i] *= 0.5 - 0.5 * math.cos(math.pi * i / rising)
    for i in range(min(falling, frames)):
        samples[frames - 1 - i] *= 0.5 - 0.5 * math.cos(math.pi * i / falling)
    return samples


def plucked_tone(hertz, seconds):
    """A soft string: every harmonic fades on its own, the high ones sooner."""
    frames = int(seconds * RATE)
    samples = [0.0] * frames
    for k, amplitude in enumerate((1.0, 0.40, 0.22, 0.10, 0.05), 1):
        fade = math.exp(-(2.2 + 1.6 * (k - 1) + hertz / 500.0) / RATE)
        turn = cmath.rect(fade, 2 * math.pi * k * hertz / RATE)
        phasor = complex(amplitude, 0.0)
        for i in range(frames):
            samples[i] += phasor.imag
            phasor *= turn
    soften_ends(samples, 0.004, 0.05)
    return samples


def bell_tone(hertz, seconds):
    """A vibraphone-like tone: a sine whose phase is swung by a second one that fades quickly, with a slow tremolo."""
    samples = []
    for i in range(int(seconds * RATE)):
        t = i / RATE
        swing = 1.1 * math.exp(-6.0 * t) * math.sin(2 * math.pi * 4.0 * hertz * t)
        tremolo = 1.0 - 0.12 * (1.0 - math.cos(2 * math.pi * 4.5 * t))
        samples.append(math.exp(-1.7 * t) * tremolo * math.sin(2 * math.pi * hertz * t + swing))
    soften_ends(samples, 0.006, 0.08)
    return samples


def soften_ends(samples, attack, release):
    """Ramps in seconds that keep a tone from starting or ending with a click."""
    rising, falling = int(attack * RATE), int(release * RATE)
    for i in range(rising):
        samples[i] *= i / rising
    for i in range(falling):
        samples[-1 - i] *= i / falling


def play_chords(dry, pads):
    timing = random.Random(7)
    beat = 0.0
    for beats, bass, pad, arpeggio in CHORDS:
        start, length = beat * BEAT, beats * BEAT
        is_last = (bass, pad) == CHORDS[-1][1:3]
        ring = TAIL if is_last else 0.9
        for number, note in enumerate(pad):
            # Two copies a few cents apart, one on each side, make the pad wide.
            for cents, pan in ((-4, 0.15), (4, 0.85)):
                tone = held_tone(PAD_TABLE, frequency(note) * 2 ** (cents / 1200), length + ring, 0.9, ring + 0.6)
                pads.add(start, tone, 0.045 - 0.004 * number, pan)
        dry.add(start, held_tone(BASS_TABLE, frequency(bass), length + 0.25, 0.05, 1.2), 0.20, 0.5)
        for step, note in enumerate(arpeggio):
            late = timing.uniform(0.0, 0.012)
            loudness = 0.15 * (1.0 if step % 4 == 0 else 0.72) * timing.uniform(0.9, 1.0)
            pan = 0.35 + 0.3 * (step % 2)
            dry.add(start + step * BEAT / 2 + late, plucked_tone(frequency(note), 1.8), loudness, pan)
        beat += beats
    return beat * BEAT


def play_melody(dry):
    for bar, beat, note, loudness in MELODY:
        dry.add(bar * BAR + beat * BEAT, bell_tone(frequency(note), 2.6), 0.17 * loudness, 0.56)


def ping_pong(source, seconds, feedback):
    """Echoes that cross from one side to the other, each duller than the last."""
    echoes = Stereo(len(source) / RATE)
    delay = int(seconds * RATE)
    dull_left = dull_right = 0.0
    for i in range(delay, len(echoes)):
        back = i - delay
        dull_left += 0.35 * (source.left[back] + feedback * echoes.right[back] - dull_left)
        dull_right += 0.35 * (feedback * echoes.left[back] - dull_right)
        echoes.left[i] = dull_left
        echoes.right[i] = dull_right + 0.35 * source.right[back]
    return echoes


def comb(samples, delay, feedback, damping):
    line = [0.0] * delay
    place = 0
    held = 0.0
    out = array.array("d", bytes(8 * len(samples)))
    for i, sample in enumerate(samples):
        echo = line[place]
        held = echo + damping * (held - echo)
        line[place] = sample + feedback * held
        out[i] = echo
        place = place + 1 if place + 1 < delay else 0
    return out


def all_pass(samples, delay, feedback):
    line = [0.0] * delay
    place = 0
    out = array.array("d", bytes(8 * len(samples)))
    for i, sample in enumerate(samples):
        echo = line[place]
        line[place] = sample + feedback * echo
        out[i] = echo - feedback * line[place]
        place = place + 1 if place + 1 < delay else 0
    return out


def hall(samples, spread):
    """Four damped combs side by side and two all-passes after them; `spread` samples tell left from right."""
    combs = [comb(samples, delay + spread, 0.83, 0.45) for delay in (1557, 1617, 1491, 1422)]
    total = array.array("d", (sum(values) for values in zip(*combs)))
    return all_pass(all_pass(total, 225 + spread, 0.5), 556 + spread, 0.5)


def remove_rumble(samples, hertz=25.0):
    """A one-pole high-pass: takes out any offset and what no loudspeaker plays."""
    keep = math.exp(-2 * math.pi * hertz / RATE)
    last_in = last_out = 0.0
    for i, sample in enumerate(samples):
        last_out = keep * (last_out + sample - last_in)
        last_in = sample
        samples[i] = last_out


def compose():
    seconds = sum(chord[0] for chord in CHORDS) * BEAT + TAIL
    dry, pads = Stereo(seconds), Stereo(seconds)
    play_chords(dry, pads)
    play_melody(dry)

    echoes = ping_pong(dry, 1.5 * BEAT / 2, 0.45)
    room = Stereo(seconds)
    room.left = hall([a + 0.8 * b for a, b in zip(dry.left, pads.left)], 0)
    room.right = hall([a + 0.8 * b for a, b in zip(dry.right, pads.right)], 23)

    dry.mix(pads, 1.0)
    dry.mix(echoes, 0.32)
    dry.mix(room, 0.07)
    return dry


def master(sound):
    """Remove rumble, fade both ends and bring the loudest sample to PEAK."""
    frames = len(sound)
    rising, falling = int(FADE_IN * RATE), int(FADE_OUT * RATE)
    for channel in (sound.left, sound.right):
        remove_rumble(channel)
        for i in range(rising):
            channel[i] *= i / rising
        for i in range(falling):
            channel[frames - 1 - i] *= 0.5 - 0.5 * math.cos(math.pi * i / falling)
    loudest = max(max(map(abs, sound.left)), max(map(abs, sound.right)))
    return PEAK / loudest


def write_wav(sound, gain, path):
    pcm = array.array("h", bytes(4 * len(sound)))
    pcm[0::2] = array.array("h", (round(32767 * gain * sample) for sample in sound.left))
    pcm[1::2] = array.array("h", (round(32767 * gain * sample) for sample in sound.right))
    if sys.byteorder == "big":
        pcm.byteswap()
    with wave.open(path, "wb") as out:
        out.setnchannels(2)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(pcm.tobytes())


TAGS = {
    "TITLE": "Night walk",
    "ARTIST": "SkinWidgets",
    "ALBUM": "Sounds for skins",
    "DATE": "2026-11-21",
    "TRACKNUMBER": "1",
    "GENRE": "Ambient",
    "COMPOSER": "make_sound.py",
    "COMMENT": "Nothing but sines, added up by a script.",
    "COPYRIGHT": "Free to use under the MIT licence",
    "LICENSE": "MIT",
}


def cover_tag():
    """The cover as Ogg files carry it: a picture block in base64."""
    front_cover, mime = 3, b"image/png"
    png = picture.encode(picture.rasterise(cover.drawing().svg()), alpha=False)
    block = struct.pack(">II", front_cover, len(mime)) + mime + struct.pack(">I", 0)
    block += struct.pack(">IIIII", cover.SIDE, cover.SIDE, 24, 0, len(png)) + png
    return base64.b64encode(block).decode()


def encode(wav, ogg):
    comments = [f"{key}={value}" for key, value in (*TAGS.items(), ("METADATA_BLOCK_PICTURE", cover_tag()))]
    # A fixed serial number makes the same samples give the same file.
    subprocess.run(["oggenc", "--quiet", "--quality", "5", "--serial", "1", "--output", ogg,
                    *(f"--comment={comment}" for comment in comments), wav], check=True)


def main(arguments):
    if len(arguments) != 1 or not arguments[0].endswith((".wav", ".ogg")):
        print(__doc__, file=sys.stderr)
        return 1
    sound = compose()
    gain = master(sound)
    if arguments[0].endswith(".wav"):
        write_wav(sound, gain, arguments[0])
        return 0
    with tempfile.NamedTemporaryFile(suffix=".wav") as wav:
        write_wav(sound, gain, wav.name)
        encode(wav.name, arguments[0])
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
