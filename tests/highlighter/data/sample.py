"""Routes through a network of lifts and stairs."""
from __future__ import annotations

import heapq
import re
from dataclasses import dataclass, field

LIMIT = 1_000
SPEED = 1.4e0  # metres a second
PATTERN = re.compile(r"(?P<name>[^#\d]+)\s+#?(?P<number>\d+)")
URL = 'https://maps.example/floors#top'


@dataclass(order=True)
class Step:
    cost: float
    place: str = field(compare=False)
    via: "Step | None" = field(default=None, compare=False)

    def path(self):
        here, places = self, []
        while here is not None:
            places.append(here.place)
            here = here.via
        return list(reversed(places))


class Building:
    '''Doors, lifts and stairs.

    A lift that's out of order has no edge at all.
    '''

    def __init__(self, edges, *, closed=()):
        self.edges = {}
        for a, b, metres in edges:
            if a in closed or b in closed:
                continue
            self.edges.setdefault(a, []).append((b, metres / SPEED))
            self.edges.setdefault(b, []).append((a, metres / SPEED))

    def route(self, start, goal):
        queue, seen = [Step(0.0, start)], set()
        while queue:
            step = heapq.heappop(queue)
            if step.place == goal:
                return step
            elif step.place in seen:
                continue
            seen.add(step.place)
            # Don't wait for lifts: they're counted with their mean time.
            for place, seconds in self.edges.get(step.place, ()):
                if place not in seen:
                    heapq.heappush(queue, Step(step.cost + seconds, place, step))
        raise LookupError(f"no way from {start!r} to {goal!r}")


async def announce(building, pairs, send=lambda text: None):
    try:
        for start, goal in pairs:
            step = building.route(start, goal)
            await send("%s: %d s, \"%s\"" % (goal, round(step.cost), ' > '.join(step.path())))
    except LookupError as error:
        yield str(error)
    finally:
        pass


def parse(line):
    match = PATTERN.match(line)
    assert match is not None and len(line) <= 0x50, "bad line: " + line
    with open('/dev/null', "w") as sink:
        print(match['name'], int(match["number"]) or None, file=sink)
    return True if match else False
