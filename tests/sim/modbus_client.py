#!/usr/bin/python3
# Independent Modbus/TCP client for the simulator tests (Debian's pymodbus 3.0).
# Usage: modbus_client.py HOST PORT
# Reads and writes holding registers of unit 1 and prints one JSON object with
# what came back; the C++ test compares it with the simulated furnace.
import json
import sys

from pymodbus.client import ModbusTcpClient


def registers(answer):
    if answer.isError():
        return {"exception": getattr(answer, "exception_code", None)}
    return answer.registers


def main():
    host, port = sys.argv[1], int(sys.argv[2])
    client = ModbusTcpClient(host, port=port, timeout=5, retries=0)
    if not client.connect():
        print(json.dumps({"connect": False}))
        return 1
    out = {"connect": True}
    out["first"] = registers(client.read_holding_registers(0, 100, slave=1))
    out["last"] = registers(client.read_holding_registers(1041, 100, slave=1))
    out["outside"] = registers(client.read_holding_registers(1100, 100, slave=1))
    written = client.write_registers(300, [1, 2, 3, 0xFFFF], slave=1)
    out["write"] = {"error": written.isError(), "address": getattr(written, "address", None),
                    "count": getattr(written, "count", None)}
    out["back"] = registers(client.read_holding_registers(300, 4, slave=1))
    out["writeOutside"] = registers(client.write_registers(1140, [5, 6], slave=1))
    client.close()
    print(json.dumps(out))
    return 0


if __name__ == "__main__":
    sys.exit(main())
