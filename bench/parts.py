"""The parts, by Google Benchmark: runs it and takes the least of several repetitions."""

import json

import measure

UNIT_SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
KEPT_MEMORY = str(64 * 1024 * 1024)  # as the engine's main asks for, on both sides


def run(program, folder, repetitions):
    """Returns, by name: seconds of processor time, and the record of the last repetition. Several
    repetitions run in a random order."""
    cost = measure.run(
        [
            program,
            "--benchmark_format=json",
            f"--benchmark_repetitions={repetitions}",
            f"--benchmark_enable_random_interleaving={str(repetitions > 1).lower()}",
            "--benchmark_min_time=0.05",
        ],
        folder,
        {"SDL_VIDEODRIVER": "offscreen", "MALLOC_TRIM_THRESHOLD_": KEPT_MEMORY},
    )
    text = cost.output.decode()
    seconds, records = {}, {}
    for record in json.loads(text[text.index("{") :])["benchmarks"]:
        if record["run_type"] != "iteration":
            continue
        name = record["run_name"].split("/iterations")[0]
        taken = record["cpu_time"] * UNIT_SECONDS[record["time_unit"]]
        seconds[name] = min(seconds.get(name, taken), taken)
        records[name] = record
    return seconds, records
