"""How a check ends: with a line for every fault."""

import sys


def conclude(faults, checked):
    for fault in faults:
        print(fault)
    print(f"{checked}: {len(faults)} faults")
    sys.exit(1 if faults else 0)
