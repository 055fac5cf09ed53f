#!/usr/bin/env python3
"""Writes the checkout chart data file: one line per remaining score,
"points;singleout;doubleout", dart codes S/D/T plus number, no blanks.

Routes are chosen by fewest darts first, then by a throwing cost that
reflects what good players aim at: set-up darts on treble 20 or 19,
finishing doubles on D20, D16, D8 or the bull.  Run it from the
repository root:  python3 tools/make_checkout_chart.py > resources/checkout_chart.txt
"""

import itertools

DARTS = [(m, n) for n in range(1, 21) for m in (1, 2, 3)] + [(1, 25), (2, 25)]

FINISH_COST = {20: 0, 16: 1, 8: 2, 18: 3, 12: 3, 10: 3, 25: 3.5, 4: 4, 1: 6, 2: 6, 3: 6}
TREBLE_SETUP_COST = {20: 0, 19: 0.5, 18: 1, 17: 1.5, 16: 2, 15: 2.5}


def points(dart):
    return dart[0] * dart[1]


def code(dart):
    return "SDT"[dart[0] - 1] + str(dart[1])


def setup_cost(dart):
    m, n = dart
    if m == 3:
        return TREBLE_SETUP_COST.get(n, 3 if n >= 10 else 5)
    if m == 2:
        return 6
    return 3 if n == 25 else 1


def double_finish_cost(dart):
    return FINISH_COST.get(dart[1], 5)


def single_finish_cost(dart):
    # Any dart may end a single-out game; a big single is the safest.
    m, n = dart
    if m == 1:
        return 2 if n == 25 else 0
    if m == 3:
        return 1 if n == 20 else 1.5 if n == 19 else 2.5
    return 4 if n == 25 else 3


def best_route(score, finishers, finish_cost):
    """Fewest darts, then lowest cost, then the highest set-up darts first."""
    for count in (1, 2, 3):
        best = None
        for setups in itertools.combinations_with_replacement(DARTS, count - 1):
            rest = score - sum(points(d) for d in setups)
            for last in finishers:
                if points(last) != rest:
                    continue
                ordered = sorted(setups, key=lambda d: (points(d), d[0]), reverse=True)
                cost = sum(setup_cost(d) for d in ordered) + finish_cost(last)
                key = (cost, [-points(d) for d in ordered], -last[0])
                if best is None or key < best[0]:
                    best = (key, ordered + [last])
        if best:
            return best[1]
    return []


def main():
    doubles = [d for d in DARTS if d[0] == 2]
    print("# points;singleout;doubleout")
    for score in range(1, 181):
        single = best_route(score, DARTS, single_finish_cost)
        double = best_route(score, doubles, double_finish_cost)
        print("%d;%s;%s" % (score, ",".join(map(code, single)), ",".join(map(code, double))))


if __name__ == "__main__":
    main()
