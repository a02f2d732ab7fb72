"""Reads and writes messages of the alarm exchange with pyasn1.

usage: pyasn1_peer.py MODULE < requests > answers

The schema is made from the ASN.1 module itself, in the module's own tagging mode. A request is a
line "TYPE HEX"; its answer is a line "XML HEX": the value in canonical XML, and the value written
anew, element by element, from that XML. A message that cannot be read is answered by "error TEXT".
"""

import re
import sys
import xml.etree.ElementTree as ElementTree

from pyasn1.codec.ber import decoder, encoder
from pyasn1.type import namedtype, tag, univ

BASIC = {"INTEGER": univ.Integer, "OCTET STRING": univ.OctetString}


class Schema:
    def __init__(self, text):
        text = re.sub(r"--.*", "", text)
        self.explicit = "EXPLICIT TAGS" in text
        self.definitions = dict(
            re.findall(r"(\w+)\s*::=\s*(SEQUENCE OF \w+|SEQUENCE \{.*?\}|INTEGER|OCTET STRING)",
                       text, re.S))

    def type_of(self, name):
        """A fresh object of the named type, without a value."""
        definition = self.definitions[name]
        if definition in BASIC:
            return BASIC[definition]()
        if definition.startswith("SEQUENCE OF"):
            return univ.SequenceOf(componentType=self.type_of(definition.split()[-1]))
        return univ.Sequence(componentType=namedtype.NamedTypes(
            *[self.field(*field) for field in self.fields(name)]))

    def fields(self, name):
        """Field name, context tag number or None, type name, whether it is optional."""
        for field in self.definitions[name][len("SEQUENCE {"):-1].split(","):
            parts = re.fullmatch(r"\s*(\w+)\s+(?:\[(\d+)\]\s+)?(\w+)(\s+OPTIONAL)?\s*", field)
            yield parts[1], parts[2] and int(parts[2]), parts[3], bool(parts[4])

    def field(self, name, number, type_name, optional):
        kind = namedtype.OptionalNamedType if optional else namedtype.NamedType
        return kind(name, self.tagged(type_name, number))

    def tagged(self, type_name, number):
        value = self.type_of(type_name)
        if number is None:
            return value
        if self.explicit:
            return value.subtype(
                explicitTag=tag.Tag(tag.tagClassContext, tag.tagFormatConstructed, number))
        simple = isinstance(value, (univ.Integer, univ.OctetString))
        form = tag.tagFormatSimple if simple else tag.tagFormatConstructed
        return value.subtype(implicitTag=tag.Tag(tag.tagClassContext, form, number))

    def xml(self, type_name, value):
        definition = self.definitions[type_name]
        if definition == "INTEGER":
            return str(int(value))
        if definition == "OCTET STRING":
            return bytes(value).hex().upper()
        if definition.startswith("SEQUENCE OF"):
            inner = definition.split()[-1]
            return "".join(element(inner, self.xml(inner, item)) for item in value)
        return "".join(
            element(name, self.xml(inner, value[name]))
            for name, _, inner, _ in self.fields(type_name) if value[name].isValue)

    def value(self, type_name, node, place):
        """Fills `place`, an object of the type, from an XML element."""
        definition = self.definitions[type_name]
        if definition == "INTEGER":
            return place.clone(int(node.text))
        if definition == "OCTET STRING":
            return place.clone(bytes.fromhex(node.text or ""))
        if definition.startswith("SEQUENCE OF"):
            inner = definition.split()[-1]
            place.clear()
            for item in node:
                place.append(self.value(inner, item, self.type_of(inner)))
            return place
        children = {child.tag: child for child in node}
        place.clear()
        for name, number, inner, _ in self.fields(type_name):
            if name in children:
                place[name] = self.value(inner, children[name], self.tagged(inner, number))
        return place


def element(name, content):
    return "<%s>%s</%s>" % (name, content, name)


def answer(schema, types, type_name, data):
    if type_name not in types:
        types[type_name] = schema.type_of(type_name)
    value, rest = decoder.decode(data, asn1Spec=types[type_name])
    if rest:
        raise ValueError("bytes are left")
    text = element(type_name, schema.xml(type_name, value))
    again = schema.value(type_name, ElementTree.fromstring(text), schema.type_of(type_name))
    return text + " " + encoder.encode(again).hex().upper()


def main():
    with open(sys.argv[1], encoding="utf-8") as module:
        schema = Schema(module.read())
    types = {}
    for line in sys.stdin:
        type_name, data = line.split()
        try:
            print(answer(schema, types, type_name, bytes.fromhex(data)))
        except Exception as failure:  # told to the test, which knows what it sent
            print("error", repr(failure))


if __name__ == "__main__":
    main()
