"""Start-up and memory: from exec to the first presented frame, against a bare SDL program.

The level ends the engine through a timer that is due at once: with the ticks on the main thread it
fires right behind the first frame, a millisecond after the start at the earliest. The bare program
ends behind its first frame as well. So the engine's figure holds everything a player waits for, and
up to one millisecond more.

The engine copies its selection-frame picture to the renderer when it loads it. The first copy of any
texture makes the OpenGL driver prepare its shaders; the second reference, a bare program that draws
one picture, shows what of the difference that is.
"""

import measure

LEVEL = b'int quit() { end; }\r\nint main() { createtimer(1, 0, "quit"); }\r\n'


def compare(engine, bare, folder, rounds, driver):
    with open(f"{folder}/levels/level1/script.txt", "wb") as file:
        file.write(LEVEL)
    environment = {"SDL_VIDEODRIVER": driver, "ZEL_TICKS": "main"}
    return measure.run_in_turns(
        {
            "engine": lambda: measure.run([engine], folder, environment),
            "bare": lambda: measure.run([bare], folder, environment),
            "picture": lambda: measure.run([bare, "picture"], folder, environment),
        },
        rounds,
    )
