"""A Modbus device of unit 1, served by pymodbus: pymodbus_server.py tcp | serial PORT BAUD

Prints "ready" and, over TCP, the port that it has chosen. Its registers are pairs: the first is made from its address,
the second counts the requests. Coil n is on when n is a multiple of 3, discrete input n when it is one of 5.
"""

import asyncio
import logging
import socket
import sys

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server import StartAsyncSerialServer, StartAsyncTcpServer
from pymodbus.transaction import ModbusRtuFramer

REGISTER_COUNT = 1000
ODD_FACTOR = 40503
requests = 0


class Pairs(ModbusSequentialDataBlock):
    """Registers that show from which address and which request they are."""

    def __init__(self, table):
        super().__init__(0, [0] * REGISTER_COUNT)
        self.table = table

    def getValues(self, address, count=1):
        global requests
        requests = (requests + 1) & 0xFFFF
        return [
            requests if at % 2 else (at * ODD_FACTOR + self.table) & 0xFFFF for at in range(address, address + count)
        ]


def bits(divisor):
    return ModbusSequentialDataBlock(0, [at % divisor == 0 for at in range(REGISTER_COUNT)])


async def serve():
    device = ModbusSlaveContext(co=bits(3), di=bits(5), hr=Pairs(0), ir=Pairs(1), zero_mode=True)
    context = ModbusServerContext(slaves={1: device}, single=False)
    if sys.argv[1] == "tcp":
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        server = await StartAsyncTcpServer(context, address=("127.0.0.1", port), defer_start=True)
        start = server.serve_forever()
        print("ready", port, flush=True)
    else:
        server = await StartAsyncSerialServer(
            context, framer=ModbusRtuFramer, port=sys.argv[2], baudrate=int(sys.argv[3]), defer_start=True
        )
        await server.start()
        start = server.serve_forever()
        print("ready 0", flush=True)
    await start


logging.disable()  # clients that leave are errors to it
asyncio.run(serve())
