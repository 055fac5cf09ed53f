#!/usr/bin/env python3
"""Synthesizes the program's nine sound effects into resources/.

Everything is made from sine waves, noise and simple filters with a fixed
random seed, so running the script again writes the same files. Mono,
16-bit PCM, 22050 Hz; each file is normalized and faded in and out so it
starts and ends without a click.
"""

import math
import os
import random
import struct
import wave

RATE = 22050
OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "resources")


def silence(seconds):
    return [0.0] * int(seconds * RATE)


def mix(into, sound, start_seconds, gain=1.0):
    start = int(start_seconds * RATE)
    if start + len(sound) > len(into):
        into.extend([0.0] * (start + len(sound) - len(into)))
    for i, value in enumerate(sound):
        into[start + i] += gain * value
    return into


def lowpass(samples, cutoff):
    """One-pole low-pass filter."""
    a = math.exp(-2 * math.pi * cutoff / RATE)
    out, y = [], 0.0
    for x in samples:
        y = (1 - a) * x + a * y
        out.append(y)
    return out


def bandpass(samples, centre, q):
    """Band-pass biquad (constant peak gain)."""
    w = 2 * math.pi * centre / RATE
    alpha = math.sin(w) / (2 * q)
    b0, b1, b2 = alpha, 0.0, -alpha
    a0, a1, a2 = 1 + alpha, -2 * math.cos(w), 1 - alpha
    x1 = x2 = y1 = y2 = 0.0
    out = []
    for x in samples:
        y = (b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2) / a0
        x2, x1, y2, y1 = x1, x, y1, y
        out.append(y)
    return out


def noise(seconds, rng):
    return [rng.uniform(-1, 1) for _ in range(int(seconds * RATE))]


def write(name, samples, peak=0.89):
    fade = int(0.004 * RATE)
    for i in range(min(fade, len(samples))):
        samples[i] *= i / fade
        samples[-1 - i] *= i / fade
    top = max(abs(v) for v in samples) or 1.0
    frames = b"".join(struct.pack("<h", int(round(v / top * peak * 32767))) for v in samples)
    with wave.open(os.path.join(OUT, name), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(frames)


def splat(rng):
    """A dart going into sisal: a dull low thud with a short woody click."""
    n = int(0.18 * RATE)
    out, phase = [], 0.0
    for i in range(n):
        t = i / RATE
        freq = 80 + 60 * math.exp(-t / 0.03)
        phase += 2 * math.pi * freq / RATE
        out.append(math.sin(phase) * math.exp(-t / 0.035)
                   + 0.35 * math.sin(2 * math.pi * 420 * t) * math.exp(-t / 0.01))
    click = lowpass(noise(0.03, rng), 1800)
    click = [v * math.exp(-(i / RATE) / 0.006) for i, v in enumerate(click)]
    return mix(out, click, 0.0, 1.6)


def boing(rng):
    """A cartoon bounce: a twangy tone that wobbles and slides up."""
    n = int(0.7 * RATE)
    out, phase = [], 0.0
    for i in range(n):
        t = i / RATE
        freq = (170 + 110 * t / 0.7) * (1 + 0.22 * math.sin(2 * math.pi * 13 * t) * math.exp(-3 * t))
        phase += 2 * math.pi * freq / RATE
        env = min(1.0, t / 0.005) * math.exp(-4.2 * t)
        out.append(env * (math.sin(phase) + 0.35 * math.sin(2 * phase) + 0.12 * math.sin(3 * phase)))
    return out


def pluck(freq, seconds, rng, damping=0.996):
    """Karplus-Strong plucked string."""
    period = max(2, int(RATE / freq))
    line = [rng.uniform(-1, 1) for _ in range(period)]
    out = []
    for i in range(int(seconds * RATE)):
        value = line[i % period]
        following = line[(i + 1) % period]
        line[i % period] = damping * 0.5 * (value + following)
        out.append(value)
    return out


def harp(rng):
    """A rising harp arpeggio over C major."""
    out = silence(1.3)
    for k, freq in enumerate([523.25, 659.25, 783.99, 1046.5, 1318.5]):
        mix(out, pluck(freq, 1.3 - 0.08 * k, rng), 0.08 * k, 0.8)
    return out


def brass(freq, seconds, vibrato=0.0):
    out, phase = [], 0.0
    for i in range(int(seconds * RATE)):
        t = i / RATE
        f = freq * (1 + vibrato * math.sin(2 * math.pi * 5.5 * t) * min(1.0, t / 0.3))
        phase += 2 * math.pi * f / RATE
        # The tone brightens as the note speaks, like a trumpet's.
        bright = min(1.0, t / 0.04)
        value = sum(math.sin(k * phase) / k ** (1.4 - 0.7 * bright) for k in range(1, 9))
        env = min(1.0, t / 0.02) * (1.0 if t < seconds - 0.06 else max(0.0, (seconds - t) / 0.06))
        out.append(env * value)
    return out


def fanfare(rng):
    """Three quick trumpet notes and a held chord: G, C, E, then G over E."""
    out = silence(1.6)
    notes = [(392.0, 0.0, 0.14), (523.25, 0.16, 0.14), (659.25, 0.32, 0.14)]
    for freq, start, length in notes:
        mix(out, brass(freq, length), start, 0.7)
    mix(out, brass(783.99, 1.1, vibrato=0.006), 0.48, 0.7)
    mix(out, brass(659.25, 1.1, vibrato=0.005), 0.48, 0.45)
    mix(out, brass(523.25, 1.1, vibrato=0.004), 0.48, 0.35)
    return out


def clap(rng):
    burst = bandpass(noise(0.02, rng), rng.uniform(900, 2400), 1.4)
    return [v * math.exp(-(i / RATE) / 0.005) for i, v in enumerate(burst)]


def whistle(rng, seconds):
    out, phase = [], 0.0
    base = rng.uniform(2100, 2700)
    for i in range(int(seconds * RATE)):
        t = i / RATE
        f = base * (1 + 0.12 * math.sin(math.pi * t / seconds)) * (1 + 0.01 * math.sin(2 * math.pi * 7 * t))
        phase += 2 * math.pi * f / RATE
        out.append(math.sin(phase) * math.sin(math.pi * t / seconds))
    return out


def sawtooth_voice(rng, seconds, pitch):
    """A buzzing voice whose pitch at time t is pitch(t), from a random phase."""
    voice, phase = [], rng.random()
    for i in range(int(seconds * RATE)):
        phase = (phase + pitch(i / RATE) / RATE) % 1.0
        voice.append(2 * phase - 1)
    return voice


def cheer(rng, seconds):
    """A crowd's "yeah": voices on an open vowel, swelling and falling."""
    out = silence(seconds)
    for _ in range(10):
        f0 = rng.uniform(160, 340)
        voice = sawtooth_voice(rng, seconds, lambda t: f0 * (1 + 0.08 * math.sin(math.pi * t / seconds)))
        voice = [a + b for a, b in zip(bandpass(voice, 700, 4), bandpass(voice, 1200, 5))]
        mix(out, voice, 0.0, 0.25)
    return [v * math.sin(math.pi * i / len(out)) for i, v in enumerate(out)]


def applause(rng, seconds, per_second, whistles=0, cheering=False):
    """Many hands clapping: the crowd joins in quickly and dies away."""
    out = silence(seconds + 0.05)
    for _ in range(int(seconds * per_second)):
        # More claps early on than at the end.
        start = seconds * (1 - math.sqrt(rng.random())) * 0.97
        mix(out, clap(rng), start, rng.uniform(0.4, 1.0))
    for _ in range(whistles):
        mix(out, whistle(rng, rng.uniform(0.4, 0.7)), rng.uniform(0.1, seconds * 0.6), 1.2)
    if cheering:
        mix(out, cheer(rng, seconds * 0.8), 0.05, 2.5)
    attack = int(0.15 * RATE)
    for i in range(len(out)):
        out[i] *= min(1.0, i / attack) * (1 - 0.6 * i / len(out))
    return out


def awwww(rng):
    """A disappointed crowd: voices on "aw" sliding down and fading."""
    seconds = 1.4
    out = silence(seconds)
    for _ in range(8):
        f0 = rng.uniform(170, 320)
        voice = sawtooth_voice(
            rng, seconds,
            lambda t: f0 * (1 - 0.28 * t / seconds) * (1 + 0.012 * math.sin(2 * math.pi * 5 * t)))
        shaped = [a + 0.7 * b for a, b in zip(bandpass(voice, 620, 5), bandpass(voice, 920, 6))]
        mix(out, lowpass(shaped, 2500), rng.uniform(0, 0.08), 0.3)
    for i in range(len(out)):
        t = i / RATE
        out[i] *= min(1.0, t / 0.18) * min(1.0, (seconds - t) / 0.5)
    return out


def main():
    rng = random.Random(20261123)
    os.makedirs(OUT, exist_ok=True)
    write("splat.wav", splat(rng))
    write("boing2.wav", boing(rng))
    write("harp1.wav", harp(rng))
    write("fanfare.wav", fanfare(rng))
    write("applause60.wav", applause(rng, 1.6, 60))
    write("applause100.wav", applause(rng, 2.6, 110, whistles=1))
    write("applause140.wav", applause(rng, 3.5, 170, whistles=3))
    write("applausewin.wav", applause(rng, 4.0, 190, whistles=4, cheering=True))
    write("awwww.wav", awwww(rng))


if __name__ == "__main__":
    main()
