"""Prints what a folder of Enigma2's settings says, as JSON.

An independent reader: it shares nothing with the one of the tool. Usage: read_settings.py FOLDER [5]
reads lamedb, with 5 lamedb5.
"""

import json
import os
import re
import sys

POLARISATIONS = ["LinearH", "LinearV", "CircularL", "CircularR"]
RATES = {0: "NotSet", 1: "1/2", 2: "2/3", 3: "3/4", 4: "5/6", 5: "7/8", 7: "3/5", 8: "4/5"}
INVERSIONS = ["normal", "inverted", "automatic"]
VIDEO = {"0000": 2, "0001": 27, "0007": 36}
SOUND = {"01": 3, "04": 6, "12": 17, "14": 15}


def lines_of(folder, name):
    with open(os.path.join(folder, name), encoding="utf-8", newline="") as file:
        return file.read().split("\n")


def transponder(kind, text):
    values = text.split(":")
    if kind == "t":
        return {"frequency": int(values[0]) // 1000}
    system, modulation = (int(v) for v in values[7:9]) if len(values) > 7 else (0, 1)
    assert (system, modulation) in ((0, 1), (1, 0)), text
    position = int(values[4])
    return {
        "frequency": int(values[0]),
        "symbolRate": int(values[1]) // 1000,
        "polarisation": POLARISATIONS[int(values[2])],
        "innerFECRate": RATES[int(values[3])],
        "orbitalPosition": abs(position),
        "westPosition": int(position < 0),
        "spectralInversion": INVERSIONS[int(values[5])],
        "modulation": "NotSet" if system else "QPSK",
    }


def pids(data):
    cached = dict(re.findall(r",c:(\d\d)([0-9a-f]{4})", data))
    ca = re.findall(r",C:([0-9a-f]{4})", data)
    result = {
        "networkName": re.match(r"p:([^,]*)", data).group(1),
        "PcrPID": int(cached.get("03", "0"), 16),
        "CA": int(ca[0], 16) if ca else 0,
        "video": [],
        "audio": [],
        "teletext": [],
    }
    if "00" in cached:
        result["video"].append([VIDEO[cached.get("05", "0000")], int(cached["00"], 16)])
    for key, kind in SOUND.items():
        if key in cached:
            result["audio"].append([kind, int(cached[key], 16)])
    if "02" in cached:
        result["teletext"].append(int(cached["02"], 16))
    return result


def service(reference, name, data, transponders):
    sid, space, tsid, onid, kind = reference.split(":")[:5]
    key = (int(space, 16), int(tsid, 16), int(onid, 16))
    position = transponders[key].get("orbitalPosition")
    if position is None:
        assert key[0] >> 16 == 0xEEEE, reference
    else:
        west = transponders[key]["westPosition"]
        assert key[0] >> 16 == (3600 - position if west else position), reference
    read = {"name": name, "serviceID": int(sid, 16), "TSID": key[1], "ONID": key[2]}
    read["serviceType"] = int(kind)
    read.update(transponders[key])
    read.update(pids(data))
    return (int(sid, 16),) + key, read


def read_four(folder):
    lines = lines_of(folder, "lamedb")
    assert lines[:2] == ["eDVB services /4/", "transponders"]
    end = lines.index("end")
    transponders = {}
    for i in range(2, end, 3):
        key = tuple(int(part, 16) for part in lines[i].split(":"))
        kind, text = lines[i + 1].lstrip("\t").split(" ", 1)
        transponders[key] = transponder(kind, text)
        assert lines[i + 2] == "/"
    assert lines[end + 1] == "services"
    services = {}
    i = end + 2
    while lines[i] != "end":
        key, read = service(lines[i], lines[i + 1], lines[i + 2], transponders)
        services[key] = read
        i += 3
    return services


def read_five(folder):
    lines = lines_of(folder, "lamedb5")
    assert lines[0] == "eDVB services /5/"
    transponders, services = {}, {}
    for line in lines[1:]:
        if line.startswith("t:"):
            key, text = line[2:].split(",", 1)
            kind, text = text.split(":", 1)
            transponders[tuple(int(part, 16) for part in key.split(":"))] = transponder(kind, text)
        elif line.startswith("s:"):
            reference, name, data = re.fullmatch(r's:([^,]*),"([^"]*)",(p:.*)', line).groups()
            key, read = service(reference, name, data, transponders)
            services[key] = read
    return services


def bouquets(folder, index):
    for line in lines_of(folder, index):
        match = re.fullmatch(r'#SERVICE 1:7:[12]:0:0:0:0:0:0:0:FROM BOUQUET "(.*)" ORDER BY bouquet',
                             line)
        if match:
            yield match.group(1)


def members(folder, name):
    found = []
    for line in lines_of(folder, name):
        if line.startswith("#SERVICE "):
            parts = line[9:].split(":")
            assert parts[:2] == ["1", "0"] and parts[7:] == ["0", "0", "0", ""], line
            sid, tsid, onid, space = (int(part, 16) for part in parts[3:7])
            found.append([(sid, space, tsid, onid), None])
        elif line.startswith("#DESCRIPTION "):
            found[-1][1] = line[13:]
    return found


def main():
    folder = sys.argv[1]
    services = read_five(folder) if sys.argv[2:] == ["5"] else read_four(folder)
    order, favourites = [], set()
    for index in ("bouquets.tv", "bouquets.radio"):
        for name in bouquets(folder, index):
            for key, own in members(folder, name):
                if ".favourites." in name:
                    favourites.add(key)
                    continue
                order.append(dict(services[key], own=own, key=key))
    for read in order:
        read["favourite"] = read.pop("key") in favourites
    assert len(order) == len(services)
    json.dump(order, sys.stdout)


main()
