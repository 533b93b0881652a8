# Written by scripts/erdinfo-layout from the table of fields: do not edit.
meta:
  id: erdinfo
  title: "Record of an event recording (erdinfo)"
  file-extension: erdinfo
  license: MIT
  endian: le
doc: "Texts are UTF-32, of which the last character may be cut; what is reserved is 0."
seq:
  - id: magic
    contents: EvtD
    doc: "magic"
  - id: format
    type: u4
    valid: 0x01080002
    doc: "format code"
  - id: header_size
    type: u4
    valid: 332
    doc: "size of the header record"
  - id: data_size
    type: u4
    valid: 156
    doc: "size of the data record"
  - id: flags
    type: u4
    doc: "flags: bits 0 to 7 a small field, bit 8 a flag, the rest reserved"
  - id: text1
    type: u4
    repeat: expr
    repeat-expr: 32
    doc: "first text"
  - id: reserved1
    size: 128
    doc: "reserved"
  - id: text2
    type: u4
    repeat: expr
    repeat-expr: 4
    doc: "second text"
  - id: text3
    type: u4
    repeat: expr
    repeat-expr: 8
    doc: "third text"
  - id: reserved2
    size: 8
    doc: "reserved"
  - id: id1
    type: s4
    doc: "first number"
  - id: id2
    type: s4
    doc: "second number"
  - id: reserved3
    size: 4
    doc: "reserved"
  - id: block1_code1
    type: u4
    valid: 1
    doc: "block's first code"
  - id: block1_code2
    type: u4
    valid: 2
    doc: "block's second code"
  - id: number1
    type: u4
    doc: "first unsigned number"
  - id: time1
    type: time
    doc: "first time"
  - id: block1_id
    type: s4
    valid: id1
    doc: "number that the block repeats"
  - id: block1_code3
    type: u2
    valid: 1
    doc: "block's third code"
  - id: block1_reserved
    size: 38
    doc: "reserved"
  - id: block2_code1
    type: u4
    valid: 1
    doc: "block's first code"
  - id: block2_code2
    type: u4
    valid: 2
    doc: "block's second code"
  - id: number2
    type: u4
    doc: "second unsigned number"
  - id: time2
    type: time
    doc: "second time"
  - id: block2_id
    type: s4
    valid: id2
    doc: "number that the block repeats"
  - id: block2_code3
    type: u2
    valid: 1
    doc: "block's third code"
  - id: block2_reserved
    size: 38
    doc: "reserved"
  - id: reserved4
    size: 16
    doc: "reserved"
types:
  time:
    seq:
      - id: seconds
        type: u4
        doc: "whole seconds since 1970-01-01 00:00 UTC, their low 32 bits"
      - id: milliseconds
        type: u4
        valid:
          max: 999
        doc: "within the second"
