"""The check picture with another position of the head: SHIFTED_HEAD="X Y Z" in mm."""

import importlib.util
import os

DATA = os.environ["ZO_PARAVIEW_DATA"]


def load(name):
    spec = importlib.util.spec_from_file_location(name.replace("-", "_"), "%s/%s.py" % (DATA, name))
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


picture = load("check-picture")
head = load("head-position")
show = picture.show


def show_from_head(simple, scene):
    view = show(simple, scene)
    head.set_head(*(float(part) for part in os.environ["SHIFTED_HEAD"].split()), view)
    return view


picture.show = show_from_head
os._exit(picture.main())
