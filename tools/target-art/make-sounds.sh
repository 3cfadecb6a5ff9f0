#!/bin/sh
# Makes the five sounds of the target practice game with sox, into
# resources/target/: short synthesised bursts of noise, mono, 11025 Hz,
# 16 bits. Run from anywhere; the same sox gives the same files (-R).
#   106 pistol, 107 shotgun, 102 blade (knife and dart), 105 missile,
#   104 machine gun.
set -eu

out="$(cd "$(dirname "$0")/../../resources/target" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

fmt="-R -r 11025 -c 1 -b 16 -e signed-integer"

# A bang: a burst of low noise dying away fast.
bang() { # file length lowpass
  sox $fmt -n "$1" synth "$2" brownnoise gain -6 lowpass "$3" \
    fade l 0 "$2" "$2" overdrive 12 gain -n -1
}

# Pistol: one sharp crack.
sox $fmt -n "$work/crack.wav" synth 0.03 whitenoise gain -6 highpass 1500 fade l 0 0.03 0.03
bang "$work/body.wav" 0.32 3500
sox -m "$work/crack.wav" "$work/body.wav" $fmt "$out/106.wav" gain -n -1

# Shotgun: a heavier, longer boom, then the pump racking twice.
bang "$work/boom.wav" 0.5 2200
sox $fmt -n "$work/click.wav" synth 0.04 whitenoise gain -6 bandpass 2500 600 fade l 0 0.04 0.04 pad 0 0.06
sox "$work/boom.wav" "$work/click.wav" "$work/click.wav" $fmt "$out/107.wav" gain -n -1

# Blade: a quick swish that rises and falls.
sox $fmt -n "$out/102.wav" synth 0.28 whitenoise gain -6 bandpass 3500 1500 \
  fade q 0.1 0.28 0.16 gain -n -3

# Missile: a whoosh away, then a distant blast.
sox $fmt -n "$work/whoosh.wav" synth 0.6 pinknoise gain -6 highpass 600 fade q 0.35 0.6 0.25 gain -n -6
bang "$work/blast.wav" 0.7 600
sox "$work/whoosh.wav" "$work/blast.wav" $fmt "$out/105.wav" gain -n -1

# Machine gun: a burst of seven short shots.
sox $fmt -n "$work/shot.wav" synth 0.05 brownnoise gain -6 lowpass 3000 fade l 0 0.05 0.05 \
  overdrive 15 pad 0 0.035
sox "$work/shot.wav" $fmt "$out/104.wav" repeat 6 gain -n -1
