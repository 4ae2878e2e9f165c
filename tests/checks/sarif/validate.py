#!/usr/bin/python3
"""Validates what a command writes against the SARIF 2.1.0 schema beside this file.

    validate.py COMMAND [ARGUMENT ...]

The schema is that of the OASIS standard as the MIT-licensed npm package @microsoft/jest-sarif has it.
"""
import json
import pathlib
import subprocess
import sys

import jsonschema

schema = json.loads((pathlib.Path(__file__).parent / "sarif-2.1.0.schema.json").read_text())
validator = jsonschema.validators.validator_for(schema)(schema)
run = subprocess.run(sys.argv[1:], stdout=subprocess.PIPE, check=False)
assert run.returncode in (0, 1), run.returncode
log = json.loads(run.stdout)
faults = [f"{list(fault.path)}: {fault.message}" for fault in validator.iter_errors(log)]
print("\n".join(faults) or f"valid, {len(log['runs'][0]['results'])} results")
# A schema that finds nothing wrong with nonsense would prove nothing.
log["runs"][0]["columnKind"] = "miles"
sys.exit(bool(faults) or validator.is_valid(log))
