"""The made-up pelvis of make_phantom: its true hip, and where a perfect reader marks it.

A source shines on the pelvis from 1000 mm, and the detector is 1150 mm away from it. All places lie in
the plane of the head centres: true mm from the middle between them, x to the patient's left, y towards
the feet. The central ray meets the middle of the picture, 60 mm above the heads.
"""
import csv
import math
import os

WIDTH, HEIGHT = 1800, 1500
PIXEL = 0.24  # mm at the detector
TO_HIP, TO_DETECTOR = 1000.0, 1150.0
MAGNIFICATION = TO_DETECTOR / TO_HIP
HEADS_BELOW_RAY = 60.0

HEAD, OTHER_HEAD = (92.0, 0.0), (-92.0, 0.0)
HEAD_RADIUS = 24.0
SOCKET_EDGE = (92.0 + 28.0 * math.sin(0.52), -28.0 * math.cos(0.52))  # 4 mm off the head
CREST_TOP = (84.0, -150.0)
CREST_LATERAL = (92.0 + 46.0, -120.0)
TROCHANTER = (92.0 + 58.0, 4.0)
BALL, BALL_RADIUS = (165.0, 60.0), 12.5

# As the measuring window names them; lengths in cm.
MEASUREMENTS = {
    "l/2, cm": 9.2, "x trochanter, cm": 0.4, "z trochanter, cm": 5.8, "C, cm": 4.6, "H, cm": 15.0,
    "CE, °": math.degrees(0.52), "Radius of head, cm": 2.4,
}


def true_results():
    """As the measuring window names them, from the reference table; the patient weighs 70 kg."""
    columns = {"R/Wb": "rWb", "Theta-R, °": "thetaR", "Theta-pol, °": "thetaPol",
               "Pmax/Wb, m^-2": "pmaxWb", "Pmax, Pa": "pmax"}
    table = os.path.join(os.path.dirname(__file__), "../reference/hips.csv")
    with open(table, encoding="utf-8", newline="") as file:
        row = next(row for row in csv.DictReader(file) if row["name"] == "Phantom")
    return {name: float(row[column]) for name, column in columns.items()}


def place(point):
    """Column and row of a point."""
    x, y = point
    return _pixel(MAGNIFICATION * x, MAGNIFICATION * (y + HEADS_BELOW_RAY))


def outline(centre, radius, count):
    """So many places on the edge of a ball's shadow, equally far apart."""
    return [_on_outline(centre, radius, 2 * math.pi * i / count) for i in range(count)]


def _pixel(x, y):
    """Of mm at the detector, from the central ray."""
    return (WIDTH - 1) / 2 + x / PIXEL, (HEIGHT - 1) / 2 + y / PIXEL


def _on_outline(centre, radius, angle):
    """Where the ray just touches the ball, looked for outwards from its middle."""
    ball = (centre[0], centre[1] + HEADS_BELOW_RAY, TO_HIP)

    def at(distance):
        return (MAGNIFICATION * ball[0] + distance * math.cos(angle),
                MAGNIFICATION * ball[1] + distance * math.sin(angle))

    low, high = 0.0, 2 * MAGNIFICATION * radius
    for _ in range(60):
        middle = (low + high) / 2
        if _distance_from_ray(ball, (*at(middle), TO_DETECTOR)) < radius:
            low = middle
        else:
            high = middle
    return _pixel(*at(low))


def _distance_from_ray(point, way):
    """Of a point from the ray that leaves the source this way."""
    (a, b, c), (d, e, f) = point, way
    return math.hypot(b * f - c * e, c * d - a * f, a * e - b * d) / math.hypot(d, e, f)
