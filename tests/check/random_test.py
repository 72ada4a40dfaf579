"""The checker over random programs, against what the engine does with each.

    random_test.py ZELCHECK SCRIPT_RUNNER MODEL_FOLDER [COUNT [FIRST_SEED [FAMILY]]]

COUNT programs are compared. With FAMILY "valid" they are well-formed; else all families of the
generator take part, most of which are refused.
"""

import concurrent.futures
import os
import sys
import tempfile
import threading

import matching
import outcome

gWorker = threading.local()


def compare(zelcheck, runner, work, name, script):
    """What the engine and the checker say. Each thread has a folder of its own."""
    if not hasattr(gWorker, "engine"):
        gWorker.engine = outcome.Engine(runner, tempfile.mkdtemp(dir=work))
    answer = gWorker.engine.answer(script)
    path = os.path.join(gWorker.engine.folder, "levels", "level1", "script.txt")
    findings = outcome.check(zelcheck, path)
    return name, answer, findings


def programs(model, count, seed, family):
    sys.path.insert(0, model)
    import generate  # noqa: E402, from the folder given
    while count > 0:
        kind, script, _ = generate.program(seed)
        if family in (None, kind):
            count -= 1
            yield f"seed {seed} ({kind})", script
        seed += 1


def main():
    zelcheck, runner, model = sys.argv[1:4]
    count = int(sys.argv[4]) if len(sys.argv) > 4 else 500
    seed = int(sys.argv[5]) if len(sys.argv) > 5 else 1
    family = sys.argv[6] if len(sys.argv) > 6 else None
    tally = matching.Tally()
    with tempfile.TemporaryDirectory(prefix="zel-random-") as work, \
            concurrent.futures.ThreadPoolExecutor(4) as pool:
        jobs = [pool.submit(compare, zelcheck, runner, work, name, script)
                for name, script in programs(model, count, seed, family)]
        for job in jobs:
            tally.take(*job.result())
    share_of_clean = 0.8 if family == "valid" else 0.1
    return tally.report(least_clean=share_of_clean * count, least_refused=0)


if __name__ == "__main__":
    sys.exit(main())
