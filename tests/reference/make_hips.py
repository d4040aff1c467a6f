"""Writes hips.csv: hips with the model's values from a computation in 50 digits.

It shares no code with the program and takes other ways through the same model: complex numbers turn
the points, the moments are those of forces on the pelvis, the muscles follow from an LU solve, the
pole is closed in by bisection on its branch. The model's own constants, two values of pi among them,
are exact decimals. Inputs stand as doubles in the units of the model; results have 20 digits.

    sudo apt-get install python3-mpmath
    /usr/bin/python3 tests/reference/make_hips.py > tests/reference/hips.csv
"""
import random
import sys

from mpmath import mp, mpc, mpf

mp.dps = 50

PI_FORCE = mpf("3.14159265358979")
PI_STRESS = mpf("3.14159265359")
GRAVITY = mpf("9.82")

INPUTS = ["lizm", "xizm", "zizm", "Cizm", "Hizm", "zasuk", "thetaCE", "headRadius", "bodyWeight"]
RESULTS = ["rWb", "thetaR", "R", "fg1", "fg2", "fg3", "thetaPol", "p0", "pmaxWb", "pmax"]
# What a comparison in double precision must allow for: how much the solve for the tensions multiplies
# rounding, how far rounding may move the computed pole, and the relative change of p0 per radian.
ALLOWANCES = ["solveLoss", "poleNoise", "stressPerRadian"]

DEFAULT = dict(lizm=10.4, xizm=0.5, zizm=6.0, Cizm=4.4, Hizm=16.0, zasuk=0.0, thetaCE=30.0,
               headRadius=0.025, bodyWeight=70.0)


class Refused(Exception):
    """The model has no answer; the reason is the text."""


# Muscles: group, relative cross-section, femoral and pelvic attachment. The trochanter's height is
# its row, 1 or 2; a coordinate is a number, or a number with the scale it goes by.
MUSCLES = [
    (1, "0.266", ("t1", "1.8", "-7.3 Z"), ("-9.7 H", "4.8", "1.5 L")),
    (1, "0.113", ("t2", "-0.4", "-6.9 Z"), ("-7.1 H", "2.6", "0")),
    (1, "0.1", ("0.1", "0.1", "-5.5 Z"), ("-5.5 H", "7.8", "4.7 L")),
    (2, "0.266", ("t1", "1.8", "-7.3 Z"), ("-10.2 H", "-2.7", "-6.2 C")),
    (2, "0.113", ("t2", "-0.4", "-6.9 Z"), ("-7.3 H", "-2.9", "-4.1 C")),
    (2, "0.12", ("42.1", "-2.2", "-3.3"), ("-7.8 H", "-4.5", "-5.6 C")),
    (2, "0.4", ("41.5", "-4.3", "-0.2"), ("-3.7 H", "-4.3", "-2.6 L")),
    (3, "0.266", ("t1", "1.8", "-7.3 Z"), ("-13.2 H", "0.2", "-1.8 C")),
    (3, "0.113", ("t2", "-0.4", "-6.9 Z"), ("-8.8 H", "0.4", "-2.0 C")),
]


def trochanter_height(group, row, x):
    factor = {"t1": "2.6", "t2": "2.7"}[row]
    if x < 0:
        factor = "2.7" if row == "t1" or group == 3 else "2.6"
    return mpf(factor) * x / mpf("2.65")


def coordinate(text, group, scale, troch_x):
    if text.startswith("t"):
        return trochanter_height(group, text, troch_x)
    number, _, letter = text.partition(" ")
    return mpf(number) * (scale[letter] if letter else 1)


def turned(point, angle):
    frontal = mpc(point[0], point[2]) * mp.expj(angle)
    return [frontal.real, point[1], frontal.imag]


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


def resultant(hip):
    """R over the body weight, its inclination in degrees, |R|, tensions of groups 1 to 3, condition."""
    l, weight = mpf(hip["lizm"]), mpf(hip["bodyWeight"]) * GRAVITY
    leg = mpf("0.161") * weight
    trochanter = mpc(hip["zizm"], hip["xizm"]) * mp.expj(mpf(hip["zasuk"]))
    scale = {"Z": trochanter.real / mpf("7.1"), "L": l / mpf("8.45"),
             "H": mpf(hip["Hizm"]) / mpf("13.52"), "C": mpf(hip["Cizm"]) / mpf("5.85")}
    sine = mpf("0.48") * l / mpf("42.3")
    if abs(sine) >= 1 or weight == 0:
        raise Refused("OutOfRange")
    moments, pulls = mp.zeros(3, 3), mp.zeros(3, 3)  # of a unit tension, one column a group
    for group, area, femoral, pelvic in MUSCLES:
        f = turned([coordinate(c, group, scale, trochanter.imag) for c in femoral], mp.asin(sine))
        p = turned([coordinate(c, group, scale, 0) for c in pelvic], -PI_FORCE / 360)
        line = [a - b for a, b in zip(f, p)]
        length = mp.sqrt(sum(c * c for c in line))
        pull = [mpf(area) * c / length for c in line]
        for k, (m, c) in enumerate(zip(cross(p, pull), pull)):
            moments[k, group - 1] += m
            pulls[k, group - 1] += c
    # Weights on the pelvis: the body's, and the leg's which the pelvis does not carry.
    at_body, at_leg = [0, 0, mpf("1.01") * l], [0, 0, mpf("0.48") * l]
    loads = [a + b for a, b in zip(cross(at_body, [weight, 0, 0]), cross(at_leg, [-leg, 0, 0]))]
    tensions = mp.lu_solve(moments, -mp.matrix(loads))
    r = pulls * tensions + mp.matrix([weight - leg, 0, 0])
    frontal = mp.sqrt(r[0] ** 2 + r[2] ** 2)
    steepness = mp.sign(r[0]) * mp.pi / 2 if r[2] == 0 else mp.atan(r[0] / abs(r[2]))
    inclination = 90 - steepness * 180 / PI_FORCE
    if inclination < 0:
        raise Refused("OutOfRange")
    return frontal / weight, inclination, mp.norm(r), list(tensions), mp.cond(moments)


def bisected(function, low, high):
    """Root of an increasing function."""
    assert function(low) < 0 < function(high), (function(low), function(high))
    for _ in range(180):
        middle = (low + high) / 2
        if function(middle) < 0:
            low = middle
        else:
            high = middle
    return (low + high) / 2


def pole_of(ce, inclination):
    """Form and pole in radians, and how far the pole's branch begins from it."""
    half = PI_STRESS / 2
    total = ce + inclination
    steep = total >= half
    if PI_STRESS <= total if steep else total <= 0:
        raise Refused("NoPole")
    origin = ce - PI_STRESS if steep else ce  # the edge that the angle is counted from
    sign = -1 if steep else 1

    def residual(pole):
        a = sign * (origin - pole)
        ratio = sign * mp.cos(a) ** 2 / (a + half + mp.sin(2 * a) / 2)
        return inclination + pole - mp.atan(ratio)

    # The search goes one way from a fixed angle; a pole on the other side is never met.
    first = half - ce if steep else -half
    if sign * residual(first) >= 0:
        raise Refused("NoPole")

    start = mp.pi / 2 - mpf("0.0002")  # just inside the branch
    ends = (origin - start, 2 * mp.pi) if steep else (-2 * mp.pi, origin + start)
    pole = bisected(residual, *ends)
    return steep, pole, sign * (origin - pole) + mp.pi / 2


def stress(hip, ratio, inclination_degrees):
    ce, radius = mpf(hip["thetaCE"]), mpf(hip["headRadius"])
    inclination = inclination_degrees * PI_STRESS / 180
    steep, pole, clearance = pole_of(ce, inclination)
    if radius == 0:
        raise Refused("DivisionByZero")
    weight = mpf(hip["bodyWeight"]) * GRAVITY
    from_edge = PI_STRESS - ce + pole if steep else ce - pole
    if abs(ce - pole - PI_STRESS / 2) < mpf("0.001"):
        p0 = 3 * ratio * weight / (2 * PI_STRESS * radius ** 2)
        per_radian = mpf(0)
    else:
        p0 = abs(3 * ratio * weight * mp.sin(inclination + pole) /
                 (2 * (radius * mp.cos(from_edge)) ** 2))
        per_radian = abs(mp.cot(inclination + pole)) + 2 * abs(mp.tan(from_edge))
    peak = p0 if from_edge >= 0 else p0 * mp.cos(from_edge)
    return dict(form="Steep" if steep else "Ordinary", thetaPol=pole * 180 / PI_STRESS, p0=p0,
                pmaxWb=peak / weight, pmax=peak, stressPerRadian=per_radian,
                # The denominator of the equation grows with the cube of the clearance and has
                # the rounding of 1; angles and arc tangent have the rounding of 2.
                poleNoise=mpf(2) ** -51 * (2 + 1 / clearance ** 2))


def computed(hip):
    row = dict(outcome="Ok", form="")
    try:
        row["rWb"], row["thetaR"], row["R"], tensions, row["solveLoss"] = resultant(hip)
        row["fg1"], row["fg2"], row["fg3"] = tensions
        row.update(stress(hip, row["rWb"], row["thetaR"]))
    except Refused as reason:
        row["outcome"] = str(reason)
    return row


def radians(degrees):
    """As a person's entry is converted: a double."""
    return float(degrees) * 3.14159265358979 / 180


def named(name, **changes):
    hip = dict(DEFAULT, thetaCE=radians(30))
    hip.update(changes)
    return name, {key: float(value) for key, value in hip.items()}


def number_word(value):
    return f"{value:g}".replace("-", "Minus").replace(".", "p").replace("e", "E")


def single_changes():
    values = dict(lizm=[5, 8.45, 9.3, 12, 15], xizm=[-4, -2, -1, -0.001, 0, 0.001, 1, 2.65, 4],
                  zizm=[2, 4, 5, 7.1, 9], Cizm=[-2, 0, 1, 3, 5.85, 8], Hizm=[8, 11, 13.52, 18, 22],
                  headRadius=[0.01, 0.02, 0.03, 0.05, 2.5], bodyWeight=[1, 30, 60, 100, 200])
    for key, row in values.items():
        for value in row:
            yield named(key + number_word(value), **{key: value})
    for degrees in [-90, -60, -30, -15, -5, -1, 1, 5, 15, 30, 60, 90, 180]:
        yield named("Rotation" + number_word(degrees), zasuk=radians(degrees))


def edge_sweep():
    for degrees in list(range(-8, 80, 2)) + list(range(80, 104)) + list(range(105, 151, 5)):
        yield named(f"Edge{number_word(degrees)}", thetaCE=radians(degrees))
    for degrees in [-5, 5, 25, 85, 95, 100, 140]:
        for l, x, z in [(8, 1.5, 7), (12, -1, 5), (14, -2.5, 4)]:
            yield named(f"Edge{number_word(degrees)}Lizm{l}", thetaCE=radians(degrees), lizm=l,
                        xizm=x, zizm=z)
    for degrees in range(-140, 61, 10):  # turned so far that R leans by 139 degrees
        yield named(f"Leaning{number_word(degrees)}", thetaCE=radians(degrees),
                    zasuk=radians(180))


def edge_where(condition, low, high):
    """The centre-edge angle, in radians, at which an increasing condition passes 0."""
    return bisected(condition, mpf(low), mpf(high))


def special_edges():
    """Centre-edge angles of the default hip on either side of what changes there."""
    inclination = resultant(named("")[1])[1] * PI_STRESS / 180

    def pole(ce):
        return pole_of(ce, inclination)[1]

    at_edge = edge_where(lambda ce: ce - pole(ce), 0.05, 1)
    half, whole = PI_STRESS / 2 - inclination, PI_STRESS - inclination
    inner = edge_where(lambda ce: ce - pole(ce) - PI_STRESS / 2 + mpf("0.001"), 1.3, half - mpf("1e-9"))
    outer = edge_where(lambda ce: ce - pole(ce) - PI_STRESS / 2 - mpf("0.001"), half + mpf("1e-9"), 1.5)
    for word, place, sizes in [("PoleAtEdge", at_edge, ["1e-2", "1e-4", "1e-7"]),
                               ("SwitchInner", inner, ["5e-4", "1e-5", "1e-8"]),
                               ("SwitchOuter", outer, ["5e-4", "1e-5", "1e-8"]),
                               ("RightAngle", half, ["1e-1", "1e-2", "1e-4", "1e-9", "1e-14"])]:
        for size in sizes:
            for side, sign in [("Below", -1), ("Above", 1)]:
                yield named(f"{word}{side}{size.replace('-', 'm')}",
                            thetaCE=place + sign * mpf(size))
    last = edge_where(lambda ce: ce - half - mp.atan(
        mp.sin(2 * ce) ** 2 / (2 * PI_STRESS - 2 * ce + mp.sin(4 * ce) / 2)), half, 1.9)
    for size in ["1e-2", "1e-4", "1e-7"]:
        for side, sign in [("Below", -1), ("Above", 1)]:
            yield named(f"StartAtPole{side}{size.replace('-', 'm')}",
                        thetaCE=last + sign * mpf(size))
    leaning = resultant(named("", zasuk=radians(180))[1])[1] * PI_STRESS / 180
    for size in ["0.3", "0.1", "0.03", "0.01", "0.004", "0.002"]:
        word = size.replace(".", "p")
        yield named(f"SumOver0By{word}", thetaCE=mpf(size) - inclination)
        yield named(f"SumUnder180By{word}", thetaCE=PI_STRESS - leaning - mpf(size),
                    zasuk=radians(180))
    for size in ["1e-12", "1e-6", "0.01", "1", "3.14"]:
        word = size.replace(".", "p").replace("-", "m")
        yield named(f"SumUnder0By{word}", thetaCE=-mpf(size) - inclination)
        yield named(f"SumOver180By{word}", thetaCE=whole + mpf(size))


def refused():
    yield named("EdgeMinus20", thetaCE=radians(-20))
    yield named("EdgeMinus100", thetaCE=radians(-100))
    for degrees in [-270, -230, -200]:  # beyond half a turn the formulas give a stress below zero
        yield named("Edge" + number_word(degrees), thetaCE=radians(degrees))
    yield named("NoLever", lizm=0)
    yield named("LeverLongerThanFemur", lizm=104)
    yield named("NoWeight", bodyWeight=0)
    yield named("NoRadius", headRadius=0)
    yield named("NoRadiusSteep", headRadius=0, thetaCE=radians(100))


def population():
    """Made-up hips all over the plausible range; the seed keeps the table the same."""
    source = random.Random(1)
    for i in range(100):
        hip = {key: round(source.uniform(low, high), 2) for key, (low, high) in dict(
            lizm=(7.5, 13), xizm=(-2, 3), zizm=(4, 8), Cizm=(2, 8), Hizm=(11, 20),
            bodyWeight=(35, 130)).items()}
        edge = source.uniform(-5, 60) if i % 4 else source.uniform(60, 150)
        yield named(f"Random{i:03}", **hip, zasuk=radians(round(source.uniform(-30, 30), 1)),
                    thetaCE=radians(round(edge, 1)), headRadius=round(source.uniform(15, 32)) / 1000)


def phantom():
    """The hip of the made-up radiographs."""
    yield named("Phantom", lizm=9.2, xizm=0.4, zizm=5.8, Cizm=4.6, Hizm=15, thetaCE=0.52,
                headRadius=0.024)


def main():
    columns = ["name"] + INPUTS + ["outcome", "form"] + RESULTS + ALLOWANCES
    rows = [named("Default")]
    for more in [single_changes(), edge_sweep(), special_edges(), refused(), population(),
                 phantom()]:
        rows += more
    names = [name for name, _ in rows]
    assert len(set(names)) == len(names)
    lines = [",".join(columns)]
    for name, hip in rows:
        result = computed(hip)
        cells = [name] + [repr(hip[key]) for key in INPUTS] + [result["outcome"], result["form"]]
        cells += [mp.nstr(result[key], 20) if key in result else "" for key in RESULTS]
        cells += [mp.nstr(result[key], 3) if key in result else "" for key in ALLOWANCES]
        lines.append(",".join(cells))
    sys.stdout.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
