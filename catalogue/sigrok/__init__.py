'''
Frames of the ZAVRA-100 attitude determination and control unit on its I2C bus: commands by name, fields with units, the
CRC of every frame, replies beside their requests, and where the bus master did not wait as long as the unit needs.
'''

from .pd import Decoder
