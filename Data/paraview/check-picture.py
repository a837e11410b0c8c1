"""The check picture of a ParaView session: what node servers show, drawn by pvserver on the wall.

    pvpython --force-offscreen-rendering check-picture.py

The host starts it and talks to it through standard input and output in messages: "VERB SIZE", a line end, SIZE bytes of
JSON, a line end. In comes one SHOW {"host", "port", "connectId", "scene"}; the scene is what zoCheckScene writes. Out
comes SHOWN {} once the picture is on the wall, WANTED {} when another client wants the server, or FAILED {"reason"}.
The picture goes with this program, which ends with its standard input.

Nodes need python3-paraview: figures and pictures are made by the ranks of pvserver themselves, so that no file is read
on them.
"""

import json
import os
import select
import sys

# What the libraries print must not come between messages.
OUT = os.fdopen(os.dup(1), "wb")
os.dup2(2, 1)
IN = os.fdopen(os.dup(0), "rb", buffering=0)

POLL = 0.5  # s between two looks for another client

# The scripts below run on every rank, into `output`. What is shown of the test image comes from rank 0 and reaches the
# others as any user's data does.
FIGURES = r'''
import json
from vtkmodules.vtkCommonCore import VTK_UNSIGNED_CHAR, vtkPoints, vtkUnsignedCharArray
from vtkmodules.vtkCommonDataModel import vtkCellArray, vtkPolyData
from vtkmodules.vtkParallelCore import vtkMultiProcessController

METRE = 0.001
LIGHT = (-0.35, 0.4, 0.85)  # from the upper left of whoever looks


def rgb(name):
    return tuple(int(name[i:i + 2], 16) for i in (1, 3, 5))


def along(a, *pairs):
    return tuple(a[i] + sum(s * v[i] for s, v in pairs) for i in range(3))


class Mesh:
    def __init__(self):
        self.points = vtkPoints()
        self.points.SetDataTypeToDouble()
        self.polygons = vtkCellArray()
        self.colours = vtkUnsignedCharArray()
        self.colours.SetNumberOfComponents(3)
        self.colours.SetName("colour")

    def point(self, place, colour):
        self.colours.InsertNextTuple3(*colour)
        return self.points.InsertNextPoint(*(METRE * c for c in place))

    def cell(self, ids):
        self.polygons.InsertNextCell(len(ids), ids)

    def add(self, corners, colour):
        self.cell([self.point(corner, colour) for corner in corners])

    def into(self, data):
        data.SetPoints(self.points)
        data.SetPolys(self.polygons)
        data.GetPointData().AddArray(self.colours)


def sphere(rows=12, columns=24):
    """Unit vectors from the north to the south, and the faces between them."""
    import math
    points = [(0.0, 1.0, 0.0)]
    for row in range(1, rows):
        polar = math.pi * row / rows
        for column in range(columns):
            turn = 2.0 * math.pi * column / columns
            points.append((math.sin(polar) * math.cos(turn), math.cos(polar), math.sin(polar) * math.sin(turn)))
    points.append((0.0, -1.0, 0.0))
    faces = []
    for column in range(columns):
        beside = (column + 1) % columns
        faces.append([0, 1 + beside, 1 + column])
        for row in range(rows - 2):
            a, b = 1 + row * columns, 1 + (row + 1) * columns
            faces.append([a + column, a + beside, b + beside, b + column])
        last = 1 + (rows - 2) * columns
        faces.append([last + column, last + beside, len(points) - 1])
    return points, faces


def unit(a):
    length = sum(c * c for c in a) ** 0.5
    return tuple(c / length for c in a) if length > 0.0 else a


def cross(a, b):
    return (a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0])


def shade(colour, light):
    """As dark at the rim as it is bright where the light comes from."""
    share = 0.5 + 0.62 * max(0.0, light)
    return tuple(min(255, int(c * share)) for c in colour)


def add_balls(mesh, balls, head):
    points, faces = sphere()
    for ball in balls:
        middle, radius, colour = ball["middle"], ball["radius"], rgb(ball["colour"])
        back = unit(along(head, (-1.0, middle)))
        right = cross((0.0, 1.0, 0.0), back)
        right = unit(right) if sum(c * c for c in right) > 1e-12 else (1.0, 0.0, 0.0)
        above = cross(back, right)
        light = unit(along((0.0, 0.0, 0.0), (LIGHT[0], right), (LIGHT[1], above), (LIGHT[2], back)))
        ids = [mesh.point(along(middle, (radius, p)), shade(colour, sum(p[i] * light[i] for i in range(3))))
               for p in points]
        for face in faces:
            mesh.cell([ids[i] for i in face])


def add_marks(mesh, marks, digits):
    for mark in marks:
        colour = rgb(mark["colour"])
        for piece in digits[mark["digit"]]:
            mesh.add([along(mark["middle"], (x, mark["right"]), (y, mark["up"])) for x, y in piece], colour)


mesh = Mesh()
if vtkMultiProcessController.GetGlobalController().GetLocalProcessId() == 0:
    scene = json.loads(SCENE)
    for figure in scene["figures"]:
        mesh.add(figure["corners"], rgb(figure["colour"]))
    add_balls(mesh, scene["balls"], scene["head"])
    add_marks(mesh, scene["marks"], scene["digits"])
mesh.into(output)
'''

# Gives each rank its own picture in its own plane: planes of a wall overlap, and those of two eyes are the same. What all
# get is points at the head and behind the pictures, where nobody sees them: they tell the camera how far to look.
TILES = r'''
import base64
import json
import paraview.modules.vtkRemotingServerManager
import paraview.modules.vtkRemotingViews
from paraview.modules.vtkRemotingCore import vtkProcessModule
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkCommonDataModel import vtkCellArray
from vtkmodules.vtkFiltersSources import vtkPlaneSource
from vtkmodules.vtkIOImage import vtkPNGReader
from vtkmodules.vtkParallelCore import vtkMultiProcessController
from vtkmodules.vtkRenderingCore import vtkActor, vtkPolyDataMapper, vtkTexture

METRE = 0.001


def show(tile, renderer):
    """Draws the picture of a tile exactly in its plane."""
    corners = [tuple(METRE * c for c in corner) for corner in tile["plane"]]
    plane = vtkPlaneSource()
    plane.SetOrigin(corners[0])
    plane.SetPoint1(corners[1])
    plane.SetPoint2(corners[2])
    mapper = vtkPolyDataMapper()
    mapper.SetInputConnection(plane.GetOutputPort())
    picture = base64.b64decode(tile["picture"])
    reader = vtkPNGReader()
    reader.SetMemoryBuffer(picture)
    reader.SetMemoryBufferLength(len(picture))
    reader.Update()
    texture = vtkTexture()
    texture.SetInputData(reader.GetOutput())
    texture.InterpolateOn()
    actor = vtkActor()
    actor.SetMapper(mapper)
    actor.SetTexture(texture)
    actor.GetProperty().SetLighting(False)
    renderer.AddActor(actor)


view = vtkProcessModule.GetProcessModule().GetSession().GetSIObject(VIEW).GetVTKObject()
rank = vtkMultiProcessController.GetGlobalController().GetLocalProcessId()
tiles = json.loads(SCENE)["tiles"]
points = vtkPoints()
points.SetDataTypeToDouble()
corners = vtkCellArray()
for tile in tiles:
    if tile["number"] == rank:
        show(tile, view.GetRenderer())
    if rank == 0:
        for corner in [HEAD] + [[h + 1.2 * (c - h) for c, h in zip(corner, HEAD)] for corner in tile["plane"]]:
            corners.InsertNextCell(1, [points.InsertNextPoint(*(METRE * c for c in corner))])
output.SetPoints(points)
output.SetVerts(corners)
'''

# Whether somebody tries to connect to the server, which takes no second client. Rank 0 listens at the server's port with a
# queue that is full, so that the system drops what comes, counts it, and the client tries again until the server listens
# once more.
WANTED = r'''
import socket
import struct
import vtkmodules.vtkParallelCore as keeper
from vtkmodules.vtkCommonCore import vtkPoints
from vtkmodules.vtkParallelCore import vtkMultiProcessController

SO_MEMINFO = 55
DROPS = 8


def listen():
    door = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
    door.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    door.bind(("", PORT))
    door.listen(0)
    plug = socket.create_connection(("127.0.0.1", PORT), 5)
    return door, plug


points = vtkPoints()
if vtkMultiProcessController.GetGlobalController().GetLocalProcessId() == 0:
    if not hasattr(keeper, "checkPictureDoor"):
        keeper.checkPictureDoor = listen()
    counts = keeper.checkPictureDoor[0].getsockopt(socket.SOL_SOCKET, SO_MEMINFO, 4 * (DROPS + 1))
    for i in range(min(100, struct.unpack_from("I", counts, 4 * DROPS)[0])):
        points.InsertNextPoint(0.0, 0.0, 0.0)
output.SetPoints(points)
'''


def say(verb, **values):
    text = json.dumps(values).encode()
    OUT.write(b"%s %d\n%s\n" % (verb.encode(), len(text), text))
    OUT.flush()


def read_request():
    line = IN.readline()
    while line and not line.startswith(b"SHOW "):
        line = IN.readline()
    if not line:
        return None
    missing = int(line.split()[1]) + 1
    text = b""
    while missing > 0:
        part = IN.read(missing)
        if not part:
            return None
        text += part
        missing -= len(part)
    return json.loads(text)


class Failure(Exception):
    pass


def connect(request):
    from paraview import simple
    from paraview.modules.vtkRemotingCore import vtkRemotingCoreConfiguration

    vtkRemotingCoreConfiguration.GetInstance().SetConnectID(request["connectId"])
    if simple.Connect(request["host"], request["port"], timeout=20) is None:
        raise Failure("the server does not answer, or refuses the connect id")
    return simple


def make_view(simple, scene):
    view = simple.CreateRenderView()
    # The windows of the wall show a layout, and stay empty without one.
    layout = simple.GetLayout(view) or simple.CreateLayout("Check picture")
    simple.AssignViewToLayout(view, layout)
    layout.SMProxy.ShowViewsOnTileDisplay()
    # It smooths the pictures of some ranks and not of others, and wipes out lines that are thinner than a pixel.
    view.UseFXAA = 0
    view.OrientationAxesVisibility = 0
    view.CenterAxesVisibility = 0
    view.UseColorPaletteForBackground = 0
    view.BackgroundColorMode = "Single Color"
    view.Background = [int(scene["background"][i:i + 2], 16) / 255.0 for i in (1, 3, 5)]
    return view


def add_source(simple, script, **values):
    source = simple.ProgrammableSource()
    source.OutputDataSetType = "vtkPolyData"
    # In a namespace of its own: that of scripts has functions in place of Python's sum() and min().
    source.Script = ("names = %r\nnames['output'] = self.GetPolyDataOutput()\nexec(%r, names)\n"
                     % (values, script))
    source.UpdatePipeline()
    return source


def show(simple, scene):
    view = make_view(simple, scene)
    if scene["content"] == "test-image":
        source = add_source(simple, FIGURES, SCENE=json.dumps(scene))
    else:
        source = add_source(simple, TILES, SCENE=json.dumps(scene), HEAD=scene["head"],
                            VIEW=view.SMProxy.GetGlobalID())
    if source.GetDataInformation().GetNumberOfPoints() == 0 and scene["tiles"]:
        raise Failure("the server made no picture; its nodes need python3-paraview")
    shown = simple.Show(source, view)
    if scene["content"] == "test-image":
        simple.ColorBy(shown, ("POINTS", "colour"))
        shown.MapScalars = 0
        # In the colours as they are.
        shown.Ambient = 1.0
        shown.Diffuse = 0.0
        shown.Specular = 0.0
    else:
        shown.Opacity = 0.0
    # The first picture resets the camera.
    simple.Render(view)
    head = [0.001 * c for c in scene["head"]]
    view.CameraPosition = head
    view.CameraFocalPoint = [head[0], head[1], head[2] - 1.0]
    view.CameraViewUp = [0.0, 1.0, 0.0]
    simple.Render(view)
    return view


def wait(simple, request):
    """Until the input ends or another client wants the server; True for the latter."""
    door = add_source(simple, WANTED, PORT=request["port"])
    script = str(door.Script)
    while True:
        if select.select([IN], [], [], POLL)[0] and not IN.read(4096):
            return False
        # Another text each time, or it would not run again.
        door.Script = script + "\n" if door.Script == script else script
        door.UpdatePipeline()
        if door.GetDataInformation().GetNumberOfPoints() > 0:
            return True


def main():
    request = read_request()
    if request is None:
        return 0
    try:
        simple = connect(request)
        show(simple, request["scene"])
        say("SHOWN")
        if wait(simple, request):
            say("WANTED")
        simple.Disconnect()
    except Failure as failure:
        say("FAILED", reason=str(failure))
        return 1
    except Exception as error:  # whatever the libraries raise
        say("FAILED", reason="%s: %s" % (type(error).__name__, error))
        return 1
    return 0


if __name__ == "__main__":
    status = main()
    OUT.flush()
    # The libraries take their time with an orderly end, and nothing is left to be ordered.
    os._exit(status)
