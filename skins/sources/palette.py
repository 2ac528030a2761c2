"""The colours of the skin: blue-black surfaces, ice-white signs, one warm accent."""

ACCENT = "#ff6600"
ACCENT_LIGHT = "#ffa24d"
ACCENT_PALE = "#ffd9b0"
ICE_TOP = "#f4f8ff"
ICE_BOTTOM = "#aebdd4"
SHINE = "#cfe2ff"
