"""Start-up and memory: from exec to the first presented frame, against a bare SDL program.

Both programs end at once after that frame: bench/first_frame.cpp is the engine's own start and one
pass of its main loop. Whatever one of them says is a failure.

The engine copies the picture of the selection box to the renderer when it loads it. The first copy
of any texture makes the OpenGL driver prepare its shaders; the second reference, a bare program
that draws one picture, shows what of the difference that is.
"""

import measure

EMPTY_LEVEL = "int main() { }\r\n"
LEVEL_OF_UNITS = (
    "int main() { int i; for (i = 0; i < @N@; i = i + 1) {"
    " createunit(0, i * 37 % 640, i * 53 % 480); } }\r\n"
)


def write_level(folder, text):
    with open(f"{folder}/levels/level1/script.txt", "w", newline="") as file:
        file.write(text)


def memory_of_units(engine, folder, rounds, count):
    """MiB at the first frame of a level with `count` units."""
    write_level(folder, LEVEL_OF_UNITS.replace("@N@", str(count)))
    environment = {"SDL_VIDEODRIVER": "offscreen"}
    costs = [measure.run([engine], folder, environment) for _ in range(rounds)]
    return measure.least(costs, "peak_kib") / 1024


def compare(engine, bare, folder, rounds, driver):
    write_level(folder, EMPTY_LEVEL)
    environment = {"SDL_VIDEODRIVER": driver}
    costs = measure.run_in_turns(
        {
            "engine": lambda: measure.run([engine], folder, environment),
            "bare": lambda: measure.run([bare], folder, environment),
            "picture": lambda: measure.run([bare, "picture"], folder, environment),
        },
        rounds,
    )
    said = [cost.output for runs in costs.values() for cost in runs if cost.output]
    if said:
        raise SystemExit(f"start-up failed: {said[0]!r}")
    return costs
