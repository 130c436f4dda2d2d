"""Programs made with Google Benchmark."""

import json
import os
import subprocess

from processes import programs

REPETITIONS, QUICK_REPETITIONS = 9, 3
MICROSECONDS = {"ns": 1e-3, "us": 1, "ms": 1e3, "s": 1e6}


def medians(program, quick, **variables):
    """By the benchmark's name: its entry of the report with the times in microseconds."""
    command = [programs()[program], "--benchmark_format=json", "--benchmark_report_aggregates_only=true",
               f"--benchmark_repetitions={QUICK_REPETITIONS if quick else REPETITIONS}",
               f"--benchmark_min_time={0.1 if quick else 0.3}"]
    output = subprocess.run(command, env={**os.environ, **variables}, check=True, stdout=subprocess.PIPE,
                            stderr=subprocess.DEVNULL, text=True).stdout
    found = {}
    for entry in json.loads(output)["benchmarks"]:
        if entry.get("error_occurred"):
            raise RuntimeError(f"{entry['name']}: {entry['error_message']}")
        if entry["aggregate_name"] == "median":
            name = entry["run_name"].removesuffix("/real_time")
            found[name] = {**entry, **{time: entry[time] * MICROSECONDS[entry["time_unit"]]
                                      for time in ("real_time", "cpu_time")}}
    return found
