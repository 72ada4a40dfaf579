"""Start-up and memory: from exec to the first presented frame, against a bare SDL program.

Both programs end at once behind that frame: bench/first_frame.cpp is the engine's own start and one
pass of its main loop. Whatever one of them says is a failure.

The engine copies its selection-frame picture to the renderer when it loads it. The first copy of
any texture makes the OpenGL driver prepare its shaders; the second reference, a bare program that
draws one picture, shows what of the difference that is.
"""

import measure

LEVEL = b"int main() { }\r\n"


def compare(engine, bare, folder, rounds, driver):
    with open(f"{folder}/levels/level1/script.txt", "wb") as file:
        file.write(LEVEL)
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
