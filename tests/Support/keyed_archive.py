#!/usr/bin/python3
"""Writes and reads keyed archives by Python's own property lists, as a second opinion.

keyed_archive.py dump FILE                prints the archive's top as JSON
keyed_archive.py write FILE               makes an archive whose top is the JSON object at the standard input
keyed_archive.py property-lists FOLDER    makes a plain property list FOLDER/NAME for each entry of such an object

JSON stands for archived values like this, for reading as for writing:
  true, 5               within a record: a value in the record itself; elsewhere an object of its own
  {"$number": 5}        always an object of its own (for writing)
  "text"                a string; {"$mutable": "text"} one that is a record (for writing)
  [...]                 a list
  {"$class": "A", ...}  a record; {"$class": ["A", "B"], ...} one of a class A that is a kind of B
  {...}                 a dictionary
  null                  nil
For property lists: {"$uid": 5}, {"$repeat": [count, item]}; otherwise JSON as it is.
"""

import json
import plistlib
import sys

UID = plistlib.UID


class Archiver:
    def __init__(self):
        self.objects = ["$null"]
        self.classes = {}

    def add(self, value):
        self.objects.append(value)
        return UID(len(self.objects) - 1)

    def class_of(self, names):
        if names not in self.classes:
            self.classes[names] = self.add({"$classname": names[0], "$classes": list(names)})
        return self.classes[names]

    def record(self, names, fields):
        uid = self.add(None)
        self.objects[uid.data] = {**fields(), "$class": self.class_of(names)}
        return uid

    def object(self, value):
        if value is None:
            return UID(0)
        if isinstance(value, list):
            return self.record(("NSArray", "NSObject"), lambda: {"NS.objects": [self.object(item) for item in value]})
        if not isinstance(value, dict):
            return self.add(value)
        if "$number" in value:
            return self.add(value["$number"])
        if "$mutable" in value:
            return self.record(("NSMutableString", "NSString", "NSObject"), lambda: {"NS.string": value["$mutable"]})
        if "$class" in value:
            names = value["$class"] if isinstance(value["$class"], list) else [value["$class"]]
            return self.record((*names, "NSObject"), lambda: self.fields(value))
        return self.record(("NSDictionary", "NSObject"), lambda: {
            "NS.keys": [self.object(key) for key in value],
            "NS.objects": [self.object(item) for item in value.values()]})

    def fields(self, values):
        return {("$" if key.startswith("$") else "") + key:
                value if isinstance(value, (bool, int)) else self.object(value)
                for key, value in values.items() if key != "$class"}

    def archive(self, top):
        return {"$version": 100000, "$archiver": "NSKeyedArchiver", "$top": self.fields(top), "$objects": self.objects}


def resolved(value, objects):
    if isinstance(value, UID):
        return None if value.data == 0 else resolved(objects[value.data], objects)
    if not isinstance(value, dict):
        return value
    name = None
    if "$class" in value:
        described = objects[value["$class"].data]
        name = described["$classname"]
        assert described["$classes"][0] == name and described["$classes"][-1] == "NSObject", described
        assert sum(other == described for other in objects) == 1, "the class is told twice"
        if "NSArray" in described["$classes"]:
            return [resolved(item, objects) for item in value["NS.objects"]]
        if "NSDictionary" in described["$classes"]:
            pairs = zip(value["NS.keys"], value["NS.objects"], strict=True)
            return {resolved(key, objects): resolved(item, objects) for key, item in pairs}
    fields = {key[key.startswith("$$"):]: resolved(item, objects) for key, item in value.items() if key != "$class"}
    return {"$class": name, **fields} if name else fields


def dump(file):
    with open(file, "rb") as stream:
        archive = plistlib.load(stream, fmt=plistlib.FMT_BINARY)
    assert archive["$archiver"] == "NSKeyedArchiver" and archive["$version"] == 100000, archive
    assert archive["$objects"][0] == "$null"
    json.dump(resolved(archive["$top"], archive["$objects"]), sys.stdout, ensure_ascii=False, sort_keys=True)


def save(file, propertyList):
    with open(file, "wb") as stream:
        plistlib.dump(propertyList, stream, fmt=plistlib.FMT_BINARY, sort_keys=False)


def from_json(value):
    if isinstance(value, list):
        return [from_json(item) for item in value]
    if not isinstance(value, dict):
        return value
    if "$uid" in value:
        return UID(value["$uid"])
    if "$repeat" in value:
        count, item = value["$repeat"]
        return [from_json(item)] * count
    return {key: from_json(item) for key, item in value.items()}


def main():
    command, path = sys.argv[1:]
    if command == "dump":
        dump(path)
    elif command == "write":
        save(path, Archiver().archive(json.load(sys.stdin)))
    elif command == "property-lists":
        for name, value in json.load(sys.stdin).items():
            save(f"{path}/{name}", from_json(value))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
