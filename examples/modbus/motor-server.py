#!/usr/bin/env python3
"""A Modbus server with a motor that moves, to try the workbench without a drive.

Needs pymodbus 3 (Debian: python3-pymodbus) and, for a serial port, pyserial-asyncio (python3-serial-asyncio).
Serves one of the register maps beside this file: position over velocity of each axis is a circle, and so are the
positions of two neighbouring axes. Refuses to be written to.
"""

import argparse
import asyncio
import json
import logging
import math
import pathlib
import struct
import sys
import time

try:
    from pymodbus.datastore import ModbusServerContext, ModbusSlaveContext
    from pymodbus.server import StartAsyncSerialServer, StartAsyncTcpServer
    from pymodbus.transaction import ModbusRtuFramer
except ImportError as problem:
    sys.exit(f"motor-server.py: {problem}; on Debian: apt install python3-pymodbus python3-serial-asyncio")

TABLES = {1: "coil", 2: "discrete input", 3: "holding register", 4: "input register"}
REGISTER_BITS = {"int16": 16, "uint16": 16, "int32": 32, "uint32": 32, "float32": 32}
AMPLITUDE = 100000.0  # of each position, in its unit


def quantities(seconds, axis, period):
    """What a value of the given name is at a time, in its unit; the axis turns once in a period, in seconds."""
    angle = 2.0 * math.pi * seconds / period + axis * math.pi / 2.0
    speed = 2.0 * math.pi / period
    position = AMPLITUDE * math.cos(angle)
    current = 0.5 + 0.4 * abs(math.sin(angle))
    return {
        "Actual position": position,
        "Actual velocity": -AMPLITUDE * speed * math.sin(angle),
        "Target position": AMPLITUDE * math.cos(angle + 0.05),
        "Actual current": math.copysign(current, -math.sin(angle)),
        "Motor current": current,
        "Actual torque": -60.0 * math.sin(angle),
        "Load angle": 5.0 * math.sin(angle),
        "Status word": 0x0237,  # operation enabled, remote
        "Control word": 0x000F,
        "Mode of operation": 8,
        "Moving": 1,
        "Supply voltage": 24.0 + 0.2 * math.sin(50.0 * angle),
        "Board temperature": 41.5,
        "Operating time": seconds,
        "Enable switch": 1,
        "Brake released": 1,
        "Identity": 0x00120403,
    }


class Device(ModbusSlaveContext):
    """All tables of a device, as its register map describes them; each request is answered for one point in time."""

    def __init__(self, register_map, period, record):
        super().__init__(zero_mode=True)
        self.map = register_map
        self.period = period
        self.record = record
        self.begun = time.monotonic()
        self.ends = {}  # by table: the address behind the last value
        for value in register_map["values"]:
            table = value["table"]
            end = self.address(value) + REGISTER_BITS.get(value.get("type"), 16) // 16
            self.ends[table] = max(self.ends.get(table, 0), end)

    def address(self, value):
        """As on the wire."""
        address = value["address"]
        return (address if isinstance(address, int) else int(address, 0)) - self.map.get("countsFrom", 0)

    def words(self, value, seconds):
        """What stands in the device for a value: one word for each entry of its table."""
        number = quantities(seconds, value.get("axis", 0), self.period).get(value["name"], 0)
        kind = value.get("type")
        if kind is None:
            return [number]
        number = (number - value.get("offset", 0)) / value.get("scale", 1)
        if kind == "float32":
            raw = struct.unpack(">I", struct.pack(">f", number))[0]
        else:
            raw = round(number) & (1 << REGISTER_BITS[kind]) - 1
        words = [raw >> 16, raw & 0xFFFF] if REGISTER_BITS[kind] == 32 else [raw]
        if value.get("wordOrder", self.map.get("wordOrder")) == "low first":
            words.reverse()
        if value.get("byteOrder", self.map.get("byteOrder")) == "low first":
            words = [(word & 0xFF) << 8 | word >> 8 for word in words]
        return words

    def validate(self, fc_as_hex, address, count=1):
        """Whether a request is answered; other requests get the exception "illegal data address"."""
        return fc_as_hex in TABLES and address + count <= self.ends.get(TABLES[fc_as_hex], 0)

    def getValues(self, fc_as_hex, address, count=1):
        seconds = time.monotonic() - self.begun
        answer = [0] * count
        for value in self.map["values"]:
            first = self.address(value) - address
            if value["table"] != TABLES[fc_as_hex] or not -2 < first < count:
                continue
            for index, word in enumerate(self.words(value, seconds), first):
                if 0 <= index < count:
                    answer[index] = word
        if self.record:
            words = " ".join(f"{word:04X}" for word in answer)
            print(f"{seconds:.6f},{TABLES[fc_as_hex]},0x{address:04X},{words}", file=self.record, flush=True)
        return answer


def arguments():
    """The command line."""
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    line = parser.add_mutually_exclusive_group(required=True)
    line.add_argument("--tcp", type=int, metavar="PORT", help="serve Modbus TCP on this port, for this computer only")
    line.add_argument("--serial", metavar="PORT", help="serve Modbus RTU on this serial port")
    parser.add_argument("--host", default="127.0.0.1", help="address to serve TCP on; 0.0.0.0 serves the network")
    parser.add_argument("--baud", type=int, default=19200)
    parser.add_argument("--parity", choices=["none", "even", "odd"], default="even")
    parser.add_argument("--stop-bits", type=int, choices=[1, 2], default=1)
    parser.add_argument("--unit", type=int, default=1, help="number of the device; requests to others are not answered")
    parser.add_argument("--map", default="servo-drive", metavar="MAP",
                        help="register map that is served: servo-drive, stepper-block, or a file")
    parser.add_argument("--period", type=float, default=4.0, metavar="SECONDS", help="time of one turn; default 4")
    parser.add_argument("--record", metavar="FILE", help="write what is answered: time,table,address,words")
    return parser.parse_args()


async def serve(options):
    """Serves until it is interrupted."""
    logging.getLogger("pymodbus").setLevel(logging.CRITICAL)  # a client that leaves is no error
    path = pathlib.Path(options.map)
    if not path.suffix:
        path = pathlib.Path(__file__).resolve().parent / f"{options.map}.json"
    record = open(options.record, "w", encoding="utf-8") if options.record else None
    device = Device(json.loads(path.read_text(encoding="utf-8")), options.period, record)
    common = {
        "context": ModbusServerContext(slaves={options.unit: device}, single=False),
        "ignore_missing_slaves": True,
        "defer_start": True,
    }
    if options.serial:
        server = await StartAsyncSerialServer(
            framer=ModbusRtuFramer, port=options.serial, baudrate=options.baud, parity=options.parity[0].upper(),
            stopbits=options.stop_bits, bytesize=8, timeout=0.1, **common)
        await server.start()
        if server.transport is None:
            raise OSError(f"{options.serial} does not take these settings; a pseudo-terminal takes --parity none")
        place = options.serial
    else:
        server = await StartAsyncTcpServer(
            address=(options.host, options.tcp), allow_reuse_address=True, **common)
        place = f"{options.host}:{options.tcp}"
    serving = asyncio.ensure_future(server.serve_forever())
    if not options.serial:
        await asyncio.wait({serving, server.serving}, return_when=asyncio.FIRST_COMPLETED)
        if serving.done():
            serving.result()  # raises what went wrong, such as a port that is in use
    print(f'"{device.map["title"]}" is unit {options.unit} at {place}; Ctrl+C ends it', flush=True)
    await serving


if __name__ == "__main__":
    try:
        asyncio.run(serve(arguments()))
    except KeyboardInterrupt:
        pass
    except (OSError, ValueError, KeyError) as problem:
        sys.exit(f"motor-server.py: {problem}")
