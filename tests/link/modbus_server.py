# Modbus/TCP peer of the link tests (python3-pymodbus 3.0): holding registers
# of unit 1 on 127.0.0.1, a free port; prints "READY <port>", ends when stdin
# closes. Register a holds (a * 0x0101) & 0xFFFF, as test_sockets.cpp expects.
import asyncio
import os
import sys

from pymodbus.datastore import (ModbusSequentialDataBlock, ModbusServerContext,
                                ModbusSlaveContext)
from pymodbus.server.async_io import ModbusTcpServer


async def main():
    block = ModbusSequentialDataBlock(0, [(a * 0x0101) & 0xFFFF for a in range(2000)])
    # zero_mode: the address on the wire is the register index.
    slave = ModbusSlaveContext(hr=block, zero_mode=True)
    context = ModbusServerContext(slaves=slave, single=True)
    server = ModbusTcpServer(context, address=("127.0.0.1", 0))
    asyncio.create_task(server.serve_forever())
    await server.serving
    port = server.server.sockets[0].getsockname()[1]
    print("READY", port, flush=True)
    await asyncio.get_running_loop().run_in_executor(None, sys.stdin.read)
    os._exit(0)


asyncio.run(main())
