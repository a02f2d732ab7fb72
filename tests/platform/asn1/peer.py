"""The samples of the ASN.1 tests by pyasn1, an implementation that is none of ours.

peer.py read          each line of the input, "implicit HEX" or "explicit HEX", becomes "VALUE HEX":
                      what the bytes decode to, and how pyasn1 encodes that
peer.py write COUNT   so many lines "implicit VALUE HEX" or "explicit VALUE HEX" of chance
"""
import random
import sys

from pyasn1.codec.ber import decoder, encoder
from pyasn1.type import namedtype, tag, univ

SIMPLE, CONSTRUCTED = tag.tagFormatSimple, tag.tagFormatConstructed
DEPTH = 2
# pyasn1 writes these with one byte more than it takes, so that bytes could not be compared.
LEFT_OUT = (-2**7, -2**15, -2**23, -2**31)


def tagged(value, number, tagging):
    form = SIMPLE if isinstance(value, (univ.Integer, univ.OctetString)) else CONSTRUCTED
    if tagging == "implicit":
        return value.subtype(implicitTag=tag.Tag(tag.tagClassContext, form, number))
    return value.subtype(explicitTag=tag.Tag(tag.tagClassContext, CONSTRUCTED, number))


def sequence_of(component):
    return univ.SequenceOf(componentType=component)


def point():
    return univ.Sequence(componentType=namedtype.NamedTypes(
        namedtype.NamedType("x", univ.Integer()), namedtype.NamedType("y", univ.Integer())))


def sample(tagging, depth):
    def optional(name, value, number):
        return namedtype.OptionalNamedType(name, tagged(value, number, tagging))

    required = namedtype.NamedType
    fields = [
        required("number", univ.Integer()),
        required("name", univ.OctetString()),
        optional("flag", univ.Integer(), 0),
        required("place", point()),
        optional("target", point(), 2),
        required("values", sequence_of(univ.Integer())),
        optional("notes", sequence_of(univ.OctetString()), 1),
    ]
    if depth > 0:
        fields.append(optional("children", sequence_of(sample(tagging, depth - 1)), 3))
    fields += [
        optional("code", univ.Integer(), 31),
        optional("label", univ.OctetString(), 200),
        optional("path", point(), 20000),
        required("last", univ.Integer()),
    ]
    return univ.Sequence(componentType=namedtype.NamedTypes(*fields))


SCHEMAS = {tagging: sample(tagging, DEPTH) for tagging in ("implicit", "explicit")}


def text(value):
    if isinstance(value, univ.Integer):
        return str(int(value))
    if isinstance(value, univ.OctetString):
        return bytes(value).hex()
    if isinstance(value, univ.SequenceOf):
        return "[" + ",".join(text(element) for element in value) + "]"
    present = ((name, value[name]) for name in value if value[name].isValue)
    return "{" + ",".join(name + "=" + text(field) for name, field in present) + "}"


def read():
    for line in sys.stdin:
        tagging, hexadecimal = line.split()
        value, rest = decoder.decode(bytes.fromhex(hexadecimal), asn1Spec=SCHEMAS[tagging])
        if rest:
            raise ValueError("bytes are left")
        print(text(value), encoder.encode(value).hex())


def fill(value, chance):
    """Gives every field that is to be there a value."""
    if isinstance(value, univ.Integer):
        number = chance.getrandbits(chance.randrange(32)) - chance.choice([0, 2**31])
        return value.clone(number + 1 if number in LEFT_OUT else number)
    if isinstance(value, univ.OctetString):
        return value.clone(chance.randbytes(chance.choice([0, 3, 23, 24, 127, 128, 300])))
    filled = value.clone()
    if isinstance(value, univ.SequenceOf):
        filled.clear()
        for index in range(chance.randrange(4)):
            filled[index] = fill(value.componentType, chance)
        return filled
    for field in value.componentType.namedTypes:
        if not field.isOptional or chance.random() < 0.5:
            filled[field.name] = fill(field.asn1Object, chance)
    return filled


def write(count):
    chance = random.Random(20261121)
    for _ in range(count):
        tagging = chance.choice(["implicit", "explicit"])
        value = fill(SCHEMAS[tagging], chance)
        print(tagging, text(value), encoder.encode(value).hex())


if __name__ == "__main__":
    read() if sys.argv[1] == "read" else write(int(sys.argv[2]))
