"""What the tests of whole studies read back."""

import csv


def rows(folder):
    """The table of a study, but for the seconds."""
    with (folder / "study.csv").open(newline="") as file:
        return [{key: value for key, value in row.items() if key != "seconds"}
                for row in csv.DictReader(file)]


def results(folder):
    """Each result as it stands: a run that is made again has other seconds."""
    return {path: path.read_bytes() for path in folder.glob("runs/*/result.json")}


def write_study(path, mill, lines):
    path.write_text("\n".join([f"mill = {mill}", *lines]) + "\n")
