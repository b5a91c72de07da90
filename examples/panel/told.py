"""Values as the index files tell them."""


def number_told(value):
    """As few digits as tell it from any other number of single precision."""
    short = float(f"{value:.9g}")
    return int(short) if short == int(short) and abs(short) < 1e9 else short


def name_told(name):
    """Text, where the bytes are UTF-8."""
    try:
        return {"name": name.decode("utf-8")}
    except UnicodeDecodeError:
        return {"name": None, "name_bytes": name.hex()}
